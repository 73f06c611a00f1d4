#include "formats/help/help_project.h"

#include "formats/help/help_compiler.h"
#include "formats/markup/html.h"
#include "output/clog.h"
#include "output/file_error.h"
#include "output/host_handlers.h"
#include "output/missing_compiler.h"
#include "system/code_page.h"
#include "system/files/files.h"
#include "text/fmt.h"
#include "text/utf.h"

#include <algorithm>
#include <utility>

using namespace scrivalen;

namespace {

constexpr int kBugLine = 156;  // the line number in the log entry for a compiler that does not start; fixed

constexpr const wchar_t* kContentsHead =
    L"<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n<HTML>\n<HEAD>\n<!-- Sitemap 1.0 -->\n</HEAD>\n<BODY>\n";

struct MemoryFile : OutputFile {
  void Write(const void* data, std::size_t size) override { bytes.append(static_cast<const char*>(data), size); }

  std::string bytes;
};

std::string toBytes(std::wstring_view text, LossCounter& loss) {
  constexpr std::size_t kWidest = 4;  // bytes per character in any code page
  std::string bytes(text.size() * kWidest, '\0');
  bytes.resize(toCodePage(text, bytes.data(), bytes.size(), loss).value_or(0));
  return bytes;
}

std::string toBytes(std::wstring_view text) {
  LossCounter ignored;
  return toBytes(text, ignored);
}

std::wstring optionLine(std::wstring_view key, std::wstring_view value) { return FMT::Format(L"%s=%s\n", key, value); }

std::wstring parameterLine(std::wstring_view name, std::wstring_view value) {
  return FMT::Format(L"<param name=\"%s\" value=\"%s\">\r\n", name, value);
}

void writeSiteProperties(HTML& writer) {
  writer.OpenTag(L"OBJECT", L"type", L"text/site properties");
  writer.Text(parameterLine(L"ImageType", L"Folder"));
  writer.CloseTag(L"OBJECT");
}

void writeEntry(HTML& writer, const CCHM::ContentsEntry& entry) {
  writer.Literal("<LI>");
  writer.OpenTag(L"OBJECT", L"type", L"text/sitemap");
  writer.Text(parameterLine(L"Name", entry.name));
  if (entry.kind == 0) {
    writer.Text(parameterLine(L"Local", entry.local));
  }
  writer.CloseTag(L"OBJECT");
}

// Only one list is closed, however many levels the next entry goes back up: readers expect this form.
void writeEntries(HTML& writer, const std::vector<CCHM::ContentsEntry>& entries) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const std::int32_t level = entries[i].level;
    if (i > 0 && level > entries[i - 1].level) {
      writer.Literal("<UL>");
    }
    writeEntry(writer, entries[i]);
    if (i + 1 < entries.size() && level > entries[i + 1].level) {
      writer.Literal("</UL>");
    }
  }
}

// Logs the pages and folders that the compiler may not find, because the project holds their names in the code page.
void logPagesNotFound(const std::vector<std::wstring>& files, std::wstring_view projectFolder) {
  std::wstring_view logged;
  for (const std::wstring& file : files) {
    const std::wstring_view folder = folderOf(file);
    const bool isFolderFound =
        isInCodePage(folder) || (folder == projectFolder && scrivalen::formats::findsPagesInAnyProjectFolder());
    if (!isInCodePage(fileNameOf(file))) {
      CLog::Bug2(FMT::Format(L"'%s' has a letter outside the code page; the help compiler may not find it.", file));
    }
    if (!isFolderFound && folder != logged) {
      logged = folder;
      CLog::Bug2(FMT::Format(
          L"The folder '%s' has a letter outside the code page; the help compiler may not find the pages in it.",
          folder.substr(0, folder.size() - 1)));
    }
  }
}

}  // namespace

std::wstring scrivalen::formats::helpCompiler(std::wstring_view module) {
  constexpr const wchar_t* kName = L"hhc.exe";
  const std::wstring_view folder = folderOf(module);
  if (folder.empty()) {
    return kName;
  }
  const std::wstring beside = FMT::Format(L"%shhc%c%s", folder, kPathSeparator, kName);
  return pathExists(beside) ? beside : kName;
}

CCHM::~CCHM() = default;

void CCHM::addTopic(std::wstring_view topicTitle, const std::wstring& file) {
  ContentsEntry entry;
  std::copy_if(topicTitle.begin(), topicTitle.end(), std::back_inserter(entry.name),
               [](wchar_t c) { return c != L'"'; });
  entry.local = file;
  topics.push_back(std::move(entry));
}

void CCHM::writeProject(const std::wstring& path, std::wstring_view defaultTopic) {
  std::string bytes =
      toBytes(L"[OPTIONS]\n" + optionLine(L"Compatibility", L"1.0") + optionLine(L"Compiled file", L"report.chm") +
              optionLine(L"Contents file", L"report.hhc") + optionLine(L"Default topic", defaultTopic) +
              optionLine(L"Display compile progress", L"No") + optionLine(L"Full-text search", L"Yes") +
              optionLine(L"Language", L"0x409 English (United States)"));
  bytes += toBytes(optionLine(L"Title", title), loss);
  bytes += "[FILES]\n";
  logPagesNotFound(files, folderOf(path));
  for (const std::wstring& file : files) {
    bytes += toBytes(file + L'\n');
  }
  std::wstring written = path;  // allocated before the file exists, so that it is deleted in any case
  if (writeFile(path, bytes)) {
    projectPath.swap(written);
  }
}

void CCHM::writeContents(const std::wstring& path) {
  MemoryFile page;
  HTML writer;
  writer.Open(page);
  writer.Text(kContentsHead);
  writeSiteProperties(writer);
  writer.Literal("<UL>");
  writeEntries(writer, topics);
  writer.Literal("</UL>");
  if (!writer.Close(1)) {
    return noteFailure(std::wstring(writer.Error()), false);
  }
  const std::wstring text = toWide(page.bytes);
  for (const ContentsEntry& entry : topics) {
    toBytes(entry.name, loss);
  }
  std::wstring written = path;
  if (writeFile(path, toBytes(text))) {
    contentsPath.swap(written);
  }
}

// Returns whether the file could be opened. The file itself logs a write error.
bool CCHM::writeFile(const std::wstring& path, std::string_view bytes) {
  ReportFile file;
  if (!file.Open(path.c_str())) {
    noteFailure(fileErrorText(FileError::Open, path, file.Error()), false);
    return false;
  }
  file.Write(bytes.data(), bytes.size());
  if (!file.Close()) {
    noteFailure(fileErrorText(FileError::Write, path, file.WriteError()), true);
  }
  return true;
}

int CCHM::compile(const std::wstring& project) {
  runCompiler(project);
  deleteWorkingFiles();
  return 1;
}

void CCHM::runCompiler(const std::wstring& project) {
  if (!failure.empty() && pathExists(project)) {
    return;
  }
  run = runProgram({scrivalen::formats::helpCompiler(homePath()), project},
                   {L"SOURCE_DATE_EPOCH=" + std::to_wstring(currentTime())});
  if (!run.started) {
    reportNotStarted();
  }
}

void CCHM::reportNotStarted() {
  std::wstring message;
  const auto error = CLog::FormatLastError(message, run.error);
  message.erase(message.find_last_not_of(L"\r\n") + 1);
  const std::wstring text = FMT::Format(L"Run Compiler: %s\nError: %d\nMessage:%s\n", run.commandLine, error, message);
  if (!isErrorBoxLogged()) {
    showErrorBox(L"Help Compiler Error!", text.c_str());
  }
  CLog::Bug(kNotStartedLine, L"CHM", kBugLine, text);
  noteFailure(
      FMT::Format(L"%s%s %s %s", kNotStartedReason, run.commandLine, message, scrivalen::formats::helpCompilerAdvice()),
      true);
}

void CCHM::deleteWorkingFiles() noexcept {
  for (const std::wstring& file : files) {
    if (std::find(foreignFiles.begin(), foreignFiles.end(), file) == foreignFiles.end()) {
      deleteFile(file);
    }
  }
  for (std::wstring* path : {&projectPath, &contentsPath}) {
    if (!path->empty()) {
      deleteFile(*path);
      path->clear();
    }
  }
}

void CCHM::noteFailure(const std::wstring& reason, bool isLogged) {
  if (failure.empty()) {
    failure = reason;
    isFailureLogged = isLogged;
  }
}

void CCHM::reset() {
  files.clear();
  topics.clear();
  foreignFiles.clear();
  failure.clear();
  isFailureLogged = false;
  run = {};
  loss.reset();
}
