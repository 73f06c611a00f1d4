#include "command.h"
#include "environment.h"
#include "markup_check.h"
#include "private_folder.h"
#include "support/pdf/pdf_pages.h"
#include "system/files/files.h"

#include <scrivalen/host.h>
#include <scrivalen/html_report.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

using scrivalen::fuzz::PrivateFolder;

// Converts a text with the command: the first two bytes choose the options, the others are the text.
namespace {

const PrivateFolder& folder() {
  static const PrivateFolder folder;
  return folder;
}

enum class Format { Text, Html, Xml, Markdown, Rtf, Pdf, Xlsx, Chm, Docx };

// Quick formats are chosen more often: a spreadsheet takes as long as a hundred pages. New ones come last, so that the
// corpus keeps its formats.
constexpr Format kFormats[] = {
    Format::Html, Format::Html, Format::Html, Format::Html,     Format::Xml,      Format::Xml,      Format::Text,
    Format::Text, Format::Text, Format::Rtf,  Format::Rtf,      Format::Rtf,      Format::Pdf,      Format::Pdf,
    Format::Pdf,  Format::Xlsx, Format::Chm,  Format::Markdown, Format::Markdown, Format::Markdown, Format::Docx};
constexpr const char* kNames[] = {"text", "html", "xml", "markdown", "rtf", "pdf", "xlsx", "chm", "docx"};

struct Choice {
  Format format;
  const char* from;
  bool unsafe;
  std::vector<std::string> options;
};

Choice choiceOf(unsigned how, unsigned flags) {
  Choice choice{kFormats[how % std::size(kFormats)], "markdown", (flags & 1) != 0, {}};
  const auto add = [&](unsigned flag, std::vector<std::string> options) {
    if ((flags & flag) != 0) {
      choice.options.insert(choice.options.end(), options.begin(), options.end());
    }
  };
  add(1, {"--unsafe"});
  add(4, {"--toc"});
  add(8, {"--landscape"});
  add(16, {"--single-byte"});
  add(32, {"--title", "a <b> %TITLE% {\\"});
  if ((flags & 64) != 0) {
    choice.from = (flags & 128) != 0 ? "csv" : "tsv";
  } else {
    add(128, {"--separator", " | "});
  }
  return choice;
}

struct Outcome {
  int status = 0;
  std::string errors;
};

Outcome convert(const Choice& choice, std::string_view input) {
  Outcome outcome;
  std::string output;
  scrivalen::command::Environment environment;
  environment.readInput = [&](void* data, std::size_t size) {
    const std::size_t count = std::min(size, input.size());
    std::memcpy(data, input.data(), count);
    input.remove_prefix(count);
    return std::optional<std::size_t>(count);
  };
  environment.writeOutput = [&](std::string_view text) {
    output += text;
    return true;
  };
  environment.writeError = [&](std::string_view text) { outcome.errors += text; };
  environment.variable = [](const char*) { return std::optional<std::string>("1700000000"); };
  environment.wasInterrupted = [] { return false; };
  const std::string target = kNames[static_cast<std::size_t>(choice.format)] + (":" + folder().path() + "out");
  std::vector<std::string> arguments = {"-", "--from", choice.from, "-o", target};
  arguments.insert(arguments.end(), choice.options.begin(), choice.options.end());
  outcome.status = scrivalen::command::runCommand(arguments, environment);
  return outcome;
}

void require(bool good, const Choice& choice, std::string_view problem) {
  if (!good) {
    std::fprintf(stderr, "%s from %s: %.*s\n", kNames[static_cast<std::size_t>(choice.format)], choice.from,
                 static_cast<int>(problem.size()), problem.data());
    std::abort();
  }
}

std::string problemOfPdf(const std::string& bytes) {
  const scrivalen::test::PdfPages pdf(bytes);
  return pdf.problems().empty() ? "" : pdf.problems().front();
}

std::string problemOfArchive(const std::string& bytes) { return bytes.starts_with("PK\x03\x04") ? "" : "no archive"; }

std::string problemOfRtf(std::string_view bytes) {
  return bytes.ends_with("}\n") ? scrivalen::fuzz::problemOfRtf(bytes.substr(0, bytes.size() - 1)) : "no end";
}

std::string problemOf(const Choice& choice, const std::string& bytes) {
  switch (choice.format) {
    case Format::Html:
    case Format::Chm: return choice.unsafe ? "" : scrivalen::fuzz::problemOfPages(bytes);
    case Format::Xml: return scrivalen::fuzz::problemOfDocumentXml(bytes);
    case Format::Rtf: return problemOfRtf(bytes);
    case Format::Pdf: return problemOfPdf(bytes);
    case Format::Xlsx:
    case Format::Docx: return problemOfArchive(bytes);
    case Format::Text:
    case Format::Markdown: break;
  }
  return {};
}

void check(const Choice& choice, std::string_view input);

// The command reads its own Markdown. If that is of an untrusted text, it may be trusted.
void checkPageOf(Choice choice, std::string_view markdown) {
  choice.format = Format::Html;
  choice.from = "markdown";
  choice.options = {"--unsafe"};
  check(choice, markdown);
}

void check(const Choice& choice, std::string_view input) {
  const Outcome outcome = convert(choice, input);
  const std::string bytes = folder().take("out");
  const bool isNoText = outcome.errors.find(" is not a text file") != std::string::npos ||
                        outcome.errors.find(" is in UTF-32") != std::string::npos;
  const bool mayFail = choice.from != std::string_view("markdown") || isNoText;
  require(outcome.status == 0 || (outcome.status == 1 && mayFail), choice, outcome.errors);
  require(outcome.status == 0 || (!outcome.errors.empty() && bytes.empty()), choice, "it failed without a message");
  if (outcome.status == 0) {
    const std::string problem = problemOf(choice, bytes);
    require(problem.empty(), choice, problem);
  }
  require(folder().isEmpty(), choice, "a file is left behind");
  if (outcome.status == 0 && choice.format == Format::Markdown) {
    checkPageOf(choice, bytes);
  }
}

// Formats in which a tag of the input would be one of the output.
bool hasTags(Format format) {
  return format == Format::Html || format == Format::Xml || format == Format::Markdown || format == Format::Chm;
}

// A data folder with the templates, the fonts, and a help compiler whose help file consists of its pages.
void useOwnDataFolder() {
  namespace fs = std::filesystem;
  static const PrivateFolder data;
  const fs::path path = data.path();
  std::wstring templates;
  HtmlReport().MakeTemplateName(templates, L"");
  fs::copy(scrivalen::narrowPath(templates), path / "tmpl");
  fs::create_directory_symlink(fs::path(scrivalen::narrowPath(templates)) / "../fonts", path / "fonts");
  fs::create_directory(path / "hhc");
  std::ofstream(path / "hhc/hhc.exe") << "#!/bin/sh\n/bin/cat *.htm >report.chm\n";
  fs::permissions(path / "hhc/hhc.exe", fs::perms::owner_all);
  scrivalen::SetDataFolder(data.widePath().c_str());
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  useOwnDataFolder();
  return setenv("TMPDIR", folder().path().c_str(), 1);  // help topics are written to this folder
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) {
    return 0;
  }
  const Choice choice = choiceOf(data[0], data[1]);
  const std::string_view input(reinterpret_cast<const char*>(data) + 2, size - 2);
  check(choice, input);
  if (hasTags(choice.format) && !choice.unsafe) {
    check(choice, scrivalen::fuzz::withMarkedTags(input));
  }
  return 0;
}
