// Stands in for a help compiler. Like one it takes a project and leaves report.chm beside it, but fills it with a
// record of its input: its arguments, the project, the contents and every file listed in the project. When one of these
// files is missing, it leaves nothing. A file "stand_in" beside the project makes it misbehave, or a title that begins
// with "stand-in: ".

#include "system/console.h"
#include "system/files/files.h"
#include "text/utf.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

using namespace scrivalen;

namespace {

std::string bytesOf(const std::wstring& path) {
  std::string bytes;
  if (const File file = openForReading(path)) {
    char chunk[4096];
    while (const std::size_t size = readSome(file, chunk, sizeof chunk).value_or(0)) {
      bytes.append(chunk, size);
    }
  }
  return bytes;
}

// Appends the files listed in the project, whose names are in the code page. Returns whether all exist.
bool appendListedFiles(const std::string& project, std::string& made) {
  constexpr std::string_view kFiles = "[FILES]\n";
  const std::size_t at = project.find(kFiles);
  std::istringstream lines(at == std::string::npos ? "" : project.substr(at + kFiles.size()));
  for (std::string name; std::getline(lines, name);) {
    std::ifstream file(name, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    if (!file) {
      return false;
    }
    made += "[" + name + "]\n" + bytes.str();
  }
  return true;
}

std::string behaviourOf(const std::wstring& folder, const std::string& project) {
  constexpr std::string_view kTitle = "\nTitle=stand-in: ";
  const std::size_t title = project.find(kTitle);
  if (title == std::string::npos) {
    return bytesOf(folder + L"stand_in");
  }
  const std::size_t at = title + kTitle.size();
  return project.substr(at, project.find('\n', at) - at);
}

bool writeBytes(const std::wstring& path, const std::string& bytes) {
  File file = openExclusive(path);
  return file && writeAll(file, bytes.data(), bytes.size()) && file.close();
}

}  // namespace

int main(int argc, char** argv) {
  std::string made;
  const auto arguments = programArguments(argc, argv);
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    made += "argument " + arguments[i] + "\n";
  }
  const std::wstring path = arguments.size() > 1 ? toWide(arguments[1]) : L"";
  const std::wstring folder(folderOf(path));
  const std::string project = bytesOf(path);
  made += "[report.hhp]\n" + project + "[report.hhc]\n" + bytesOf(folder + L"report.hhc");
  const bool isComplete = appendListedFiles(project, made);

  const std::string behaviour = behaviourOf(folder, project);
  if (behaviour == "leaves nothing") {
    return 0;
  }
  if (behaviour == "waits") {
    std::this_thread::sleep_for(std::chrono::minutes(5));
  }
  if (behaviour == "breaks off") {
    std::_Exit(217);
  }
  const std::wstring target = folder + L"report.chm";
  const bool isWritten = isComplete && writeBytes(target, made);
  if (isComplete && !isWritten) {
    deleteFile(target);  // the disk is full
  }
  return isWritten && behaviour != "fails but leaves a file" ? 0 : 1;
}
