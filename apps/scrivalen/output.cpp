#include "output.h"

#include "errors.h"
#include "output/file_error.h"
#include "output/missing_compiler.h"
#include "system/files/files.h"
#include "texts.h"

namespace scrivalen::command {

Output::Output(const Format& format, std::string name) : name_(std::move(name)), writer_(format.createWriter()) {}

void Output::open(const DocumentSettings& settings) {
  if (!prepareFile()) {
    return;
  }
  try {
    isOpen_ = writer_->open(file_, settings);
    if (!isOpen_) {
      fail(userMessage(writer_->error()));
    }
  } catch (const InputError& error) {
    fail(error.what());
  }
}

bool Output::prepareFile() {
  const std::wstring path = scrivalen::widePath(name_);
  if (scrivalen::isSpecialFile(path)) {
    file_ = path;
    return true;
  }
  if (scrivalen::isFolder(path)) {
    fail(cannotWrite(name_, "it is a folder"));
    return false;
  }
  // The name refers to an open descriptor. A file that a shell redirected to may already have content, so it must not
  // be replaced.
  if (scrivalen::isOpenFilesName(path)) {
    const bool exists = scrivalen::pathExists(path);
    fail(cannotWrite(name_, exists ? "it leads to a file; give that file's name" : "it is closed"));
    return false;
  }
  // Replacing it would work, but write protection is deliberate.
  if (scrivalen::isReadOnly(path)) {
    fail(cannotWrite(name_, "it is read-only"));
    return false;
  }
  target_ = std::make_unique<scrivalen::TargetFile>();
  if (!target_->prepare(path)) {
    fail(cannotWrite(name_, lastErrorText()));
    return false;
  }
  file_ = target_->newFile();
  return true;
}

// The report returns this error only when it is closed. That may be much later.
void Output::noteLogged(std::wstring_view line) {
  if (!failed() && line.starts_with(scrivalen::kWriteErrorStart) &&
      isOwnFile(line.substr(scrivalen::kWriteErrorStart.size()))) {
    fail(userMessage(std::wstring(line)));
  }
}

// The quoted path ends with an apostrophe.
bool Output::isOwnFile(std::wstring_view quotedPath) const {
  const std::wstring folder = writer_->workFolder();
  return quotedPath.starts_with(file_ + L'\'') ||
         (!folder.empty() && quotedPath.starts_with(folder + scrivalen::kPathSeparator));
}

void Output::finish() {
  if (!failed() && !writer_->close()) {
    fail(userMessage(writer_->error()));
  }
}

void Output::deliver() {
  if (!failed() && target_ && !target_->replaceBy(file_)) {
    fail(cannotWrite(name_, lastErrorText()));
  }
}

std::string Output::userMessage(const std::wstring& message) const {
  const std::wstring folder = writer_->workFolder();
  const bool namesPart = !folder.empty() && message.find(folder) != message.npos;
  const std::string text = namesPart ? withoutPartName(message, folder) : toUtf8(message);
  const std::string named = replacedAll<char>(text, toUtf8(file_), name_);
  return namesPart ? withName(named) : named;
}

// The user does not know the names of temporary parts. Their folder is named because its disk may be the full one.
std::string Output::withoutPartName(const std::wstring& message, const std::wstring& folder) const {
  const std::size_t begin = message.find(L'\'' + folder + scrivalen::kPathSeparator);
  const std::size_t end = begin == message.npos ? begin : message.find(L'\'', begin + 1 + folder.size());
  if (end == message.npos) {
    return toUtf8(message);
  }
  const std::wstring start = message.substr(0, begin);
  const std::wstring_view place = scrivalen::folderOf(folder);
  const std::string note = " (a part of it in '" + scrivalen::narrowPath(place.substr(0, place.size() - 1)) + "')";
  return toUtf8(start) + "'" + name_ + "'" + (start.ends_with(L" error for ") ? note : "") +
         toUtf8(message.substr(end + 1));
}

std::string Output::withName(const std::string& message) const {
  return message.find(name_) == message.npos ? "'" + name_ + "': " + message : message;
}

bool Output::hasReported(const std::wstring& line) const {
  return failed() && (error_.ends_with(userMessage(line)) || isMissingCompiler(line));
}

// The library words this failure differently in its log and in its error.
bool Output::isMissingCompiler(std::wstring_view line) const {
  const std::wstring folder = writer_->workFolder();
  return line.starts_with(scrivalen::kNotStartedLine) && !folder.empty() && line.find(folder) != line.npos &&
         error_.find(toUtf8(scrivalen::kNotStartedReason)) != error_.npos;
}

void Output::fail(const std::string& error) { error_ = error.empty() ? cannotWrite(name_) : error; }

}  // namespace scrivalen::command
