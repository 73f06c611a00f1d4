// Stands in for a help compiler. It takes a project as a compiler does and leaves report.chm beside it, in which it
// writes down what it was given: its arguments, the project, the contents and every file of the project's list. A file
// "stand_in" beside the project tells it to behave badly.

#include "platform/console.h"
#include "platform/files.h"
#include "platform/utf.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

using namespace scrivalen::platform;

namespace {

std::wstring wide(const std::string& utf8) {
  std::wstring text;
  appendWide(text, utf8);
  return text;
}

std::string bytesOf(const std::wstring& path) {
  std::string bytes;
  if (const NativeFile file = openForReading(path)) {
    char chunk[4096];
    while (const std::size_t size = readSome(file, chunk, sizeof chunk).value_or(0)) {
      bytes.append(chunk, size);
    }
    closeFile(file);
  }
  return bytes;
}

// A name in the code page, as the project has it.
std::string bytesOfListed(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return file ? bytes.str() : "missing\n";
}

std::string listedFiles(const std::string& project) {
  constexpr std::string_view kFiles = "[FILES]\n";
  std::string result;
  const std::size_t at = project.find(kFiles);
  if (at != std::string::npos) {
    std::istringstream lines(project.substr(at + kFiles.size()));
    for (std::string name; std::getline(lines, name);) {
      result += "[" + name + "]\n" + bytesOfListed(name);
    }
  }
  return result;
}

bool writeBytes(const std::wstring& path, const std::string& bytes) {
  const NativeFile file = openExclusive(path);
  return file && writeAll(file, bytes.data(), bytes.size()) && closeFile(file);
}

}  // namespace

int main(int argc, char** argv) {
  std::string made;
  const auto arguments = programArguments(argc, argv);
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    made += "argument " + arguments[i] + "\n";
  }
  const std::wstring path = arguments.size() > 1 ? wide(arguments[1]) : L"";
  const std::wstring folder(folderOf(path));
  const std::string project = bytesOf(path);
  made += "[report.hhp]\n" + project + "[report.hhc]\n" + bytesOf(folder + L"report.hhc") + listedFiles(project);

  const std::string behaviour = bytesOf(folder + L"stand_in");
  if (behaviour == "leaves nothing") {
    return 0;
  }
  if (behaviour == "breaks off") {
    std::_Exit(217);
  }
  const bool isWritten = writeBytes(folder + L"report.chm", made);
  return isWritten && behaviour != "fails but leaves a file" ? 0 : 1;
}
