#include "output.h"

#include "system/files.h"
#include "texts.h"

namespace scrivalen::command {
namespace {

// "/dev/stdout" and its like lead to a file when the shell has redirected them, and that file may hold more than what
// is written now, which replacing it would lose.
bool isRedirectedStream(const std::wstring& path) { return path.starts_with(L"/dev/") && platform::pathExists(path); }

}  // namespace

Output::Output(const Format& format, std::string name) : name_(std::move(name)), writer_(format.createWriter()) {}

// The writer goes first: some systems do not remove a file that is open.
Output::~Output() {
  writer_.reset();
  removeTemporary();
}

void Output::open(const DocumentSettings& settings) {
  if (!prepareFile()) {
    return;
  }
  isOpen_ = writer_->open(file_, settings);
  if (!isOpen_) {
    fail(inPersonsWords(writer_->error()));
  }
}

bool Output::prepareFile() {
  const std::wstring path = platform::widePath(name_);
  if (platform::isSpecialFile(path)) {
    file_ = path;
    return true;
  }
  if (platform::isFolder(path)) {
    fail("cannot write '" + name_ + "': it is a folder");
    return false;
  }
  if (isRedirectedStream(path)) {
    fail("cannot write '" + name_ + "': it leads to a file; give that file's name");
    return false;
  }
  const bool exists = platform::pathExists(path);
  // It could be replaced all the same, but whoever protected it did not want that.
  if (exists && platform::isReadOnly(path)) {
    fail("cannot write '" + name_ + "': it is read-only");
    return false;
  }
  target_ = exists ? platform::resolvedPath(path) : path;
  const auto temporary = platform::createFileBeside(target_);
  if (!temporary) {
    fail("cannot write '" + name_ + "': " + lastErrorText());
    return false;
  }
  file_ = *temporary;
  // Whoever could not read the file that is replaced must not be able to read the new one.
  if (exists) {
    platform::copyPermissions(target_, file_);
  }
  return true;
}

void Output::deliver() {
  if (failed()) {
    return;
  }
  if (!writer_->close()) {
    return fail(inPersonsWords(writer_->error()));
  }
  if (target_.empty()) {
    return;
  }
  if (!platform::moveReplacing(file_, target_)) {
    return fail("cannot write '" + name_ + "': " + lastErrorText());
  }
  target_.clear();
}

std::string Output::inPersonsWords(const std::wstring& message) const {
  return replaceAll(utf8(message), utf8(file_), name_);
}

void Output::fail(const std::string& error) { error_ = error.empty() ? "cannot write '" + name_ + "'" : error; }

void Output::removeTemporary() {
  if (!target_.empty() && !file_.empty()) {
    platform::deleteFile(file_);
  }
}

}  // namespace scrivalen::command
