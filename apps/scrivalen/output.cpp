#include "output.h"

#include "errors.h"
#include "output/file_error.h"
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
      fail(inPersonsWords(writer_->error()));
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
    fail("cannot write '" + name_ + "': it is a folder");
    return false;
  }
  // The file that a shell has redirected a stream to may hold more than what is written now.
  if (scrivalen::isOpenFilesName(path)) {
    const bool exists = scrivalen::pathExists(path);
    fail("cannot write '" + name_ + "': it " + (exists ? "leads to a file; give that file's name" : "is closed"));
    return false;
  }
  // It could be replaced all the same, but whoever protected it did not want that.
  if (scrivalen::isReadOnly(path)) {
    fail("cannot write '" + name_ + "': it is read-only");
    return false;
  }
  target_ = std::make_unique<scrivalen::TargetFile>();
  if (!target_->prepare(path)) {
    fail("cannot write '" + name_ + "': " + lastErrorText());
    return false;
  }
  file_ = target_->newFile();
  return true;
}

// A report returns such a failure at its end only. That would be late: the disk is full now.
void Output::noteLogged(std::wstring_view line) {
  if (!failed() && line.starts_with(std::wstring(scrivalen::kWriteErrorStart) + file_ + L'\'')) {
    fail(inPersonsWords(std::wstring(line)));
  }
}

void Output::finish() {
  if (!failed() && !writer_->close()) {
    fail(inPersonsWords(writer_->error()));
  }
}

void Output::deliver() {
  if (!failed() && target_ && !target_->replaceBy(file_)) {
    fail("cannot write '" + name_ + "': " + lastErrorText());
  }
}

std::string Output::inPersonsWords(const std::wstring& message) const {
  return replacedAll<char>(toUtf8(message), toUtf8(file_), name_);
}

void Output::fail(const std::string& error) { error_ = error.empty() ? "cannot write '" + name_ + "'" : error; }

}  // namespace scrivalen::command
