#include "document/plain/private_file.h"

#include "document/plain/temporary_error.h"
#include "document/run.h"
#include "output/exception_barrier.h"
#include "output/failure_reason.h"
#include "output/file_error.h"
#include "system/files/files.h"
#include "text/utf.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <exception>
#include <iterator>
#include <new>
#include <stdexcept>

namespace scrivalen::document {
namespace {

// What reports log about their files. A counted line begins with the number of things that it is about.
struct LoggedLine {
  std::string_view part;
  WarningCode code;
  bool isCounted;
};

constexpr LoggedLine kLoggedLines[] = {{" could not be written as ", WarningCode::CharactersReplaced, true},
                                       {" cut at ", WarningCode::TextCut, true},
                                       {" dropped ", WarningCode::CellsDropped, true},
                                       {" without the colour", WarningCode::SomethingLeftOut, true},
                                       {"a sheet holds ", WarningCode::InputMended, false}};

constexpr LoggedLine kOtherLine{"", WarningCode::SomethingLeftOut, false};

const LoggedLine& loggedLineOf(std::string_view text) {
  const auto* const found = std::find_if(std::begin(kLoggedLines), std::end(kLoggedLines),
                                         [text](const LoggedLine& line) { return text.find(line.part) != text.npos; });
  return found == std::end(kLoggedLines) ? kOtherLine : *found;
}

// "2 characters ..." as "characters ..." and 2, "1 character ..." as "a character ..." and 1.
std::pair<std::string, std::uint64_t> counted(std::string_view line) {
  std::uint64_t count = 1;
  const char* const end = std::from_chars(line.data(), line.data() + line.size(), count).ptr;
  line.remove_prefix(static_cast<std::size_t>(end - line.data()));
  return {count == 1 ? std::string("a").append(line) : std::string(line.substr(line.empty() ? 0 : 1)), count};
}

constexpr std::string_view kIncomplete = "its temporary file cannot be completed";

}  // namespace

void PrivateFile::create(std::wstring_view name) {
  if (!folder_.createElsewhere()) {
    raiseTemporaryError("no folder can be created for its temporary file");
  }
  path_ = (folder_.path() + kPathSeparator).append(name);
}

bool PrivateFile::isStopRequested() { return run_ && !run_->report(); }

void PrivateFile::fail(std::wstring_view error) const {
  if (run_ && run_->isCancelled()) {
    throw OutputFailure(Status::Cancelled, kCancelled);
  }
  for (const FileError kind : {FileError::Open, FileError::Write}) {
    const std::wstring start = fileErrorText(kind, path_, {});
    if (error.starts_with(start)) {
      error.remove_prefix(start.size());
    }
  }
  raiseTemporaryError(kIncomplete, error);
}

void PrivateFile::deliver() {
  if (hasLostLine_) {
    throw std::bad_alloc();
  }
  copy();
  folder_.remove();
}

void PrivateFile::copy() {
  const File file = openForReading(path_);
  const bool isRead = file && readRest(file, [this](std::string_view bytes) {
                        out_.write(bytes.data(), bytes.size());
                        return !out_.hasLostBytes();
                      });
  if (!isRead && !out_.hasLostBytes()) {
    raiseTemporaryError("its temporary file cannot be read");
  }
}

void PrivateFile::log(const wchar_t* line) {
  try {
    warn(line);
  } catch (const std::exception&) {
    hasLostLine_ = true;
  }
}

// The failure of a report is its error text; of an operation that failed only the log says so.
void PrivateFile::warn(std::wstring_view line) {
  const std::wstring start = L"'" + path_ + L"': ";
  if (line.starts_with(kOperationFailed)) {
    throw std::bad_alloc();
  }
  if (!line.starts_with(start)) {
    return;
  }
  line.remove_prefix(start.size());
  const std::string text = toUtf8(line.substr(0, line.find_last_not_of(L'.') + 1));
  const LoggedLine& known = loggedLineOf(text);
  if (known.isCounted) {
    const auto [what, count] = counted(text);
    warnings_.add(known.code, what, count);
  } else {
    warnings_.add(known.code, text);
  }
}

}  // namespace scrivalen::document
