#include "formats/help/document/page_file.h"

#include "system/messages.h"
#include "system/process/write_signals.h"
#include "text/utf.h"

#include <algorithm>
#include <cstddef>
#include <new>

namespace scrivalen::help {
namespace {

// The length of the complete characters of a text.
std::size_t completeLength(std::string_view utf8) {
  constexpr std::size_t kLongest = 4;
  for (std::size_t back = 1; back < kLongest && back <= utf8.size(); ++back) {
    const std::size_t length = utf8Length(utf8[utf8.size() - back]);
    if (length > 0) {
      return length > back ? utf8.size() - back : utf8.size();
    }
  }
  return utf8.size();
}

}  // namespace

void raiseSystemError(std::string_view what) {
  const std::uint32_t error = lastSystemError();
  if (isOutOfMemoryError(error)) {
    throw std::bad_alloc();
  }
  throw ProjectFailure(std::string(what) + " in '" + toUtf8(temporaryFolderName()) +
                       "': " + toUtf8(systemErrorText(error)));
}

ProjectFile::ProjectFile(const std::wstring& path) : file_(createNew(path)) {
  if (!file_) {
    raiseSystemError(kCannotWrite);
  }
}

void ProjectFile::write(std::string_view bytes) {
  const WriteSignalsBlocked noSignals;
  if (!writeAll(file_, bytes.data(), bytes.size())) {
    raiseSystemError(kCannotWrite);
  }
}

void ProjectFile::close() {
  const WriteSignalsBlocked noSignals;
  if (!file_.close()) {
    raiseSystemError(kCannotWrite);
  }
}

bool PageFile::take(const char* data, std::size_t size) {
  std::string_view text(data, size);
  bytes_.clear();
  if (!rest_.empty()) {
    const std::size_t missing = std::min(utf8Length(rest_.front()) - rest_.size(), text.size());
    rest_.append(text.substr(0, missing));
    text.remove_prefix(missing);
    if (rest_.size() < utf8Length(rest_.front())) {
      return true;
    }
    appendWithReferences(bytes_, rest_, page_);
    rest_.clear();
  }
  const std::size_t complete = completeLength(text);
  appendWithReferences(bytes_, text.substr(0, complete), page_);
  rest_.assign(text.substr(complete));
  file_.write(bytes_);
  return true;
}

void PageFile::close() {
  bytes_.clear();
  appendWithReferences(bytes_, rest_, page_);
  file_.write(bytes_);
  file_.close();
}

}  // namespace scrivalen::help
