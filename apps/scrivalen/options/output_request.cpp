#include "options/output_request.h"

#include "errors.h"
#include "options/suggestion.h"
#include "system/files/files.h"
#include "text/ascii.h"
#include "texts.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

// Whether the text before a colon can only be meant as a format: a word, and not the letter of a drive.
bool isWord(std::string_view text) {
  return text.size() > 1 && scrivalen::isAsciiLetter(text.front()) && std::all_of(text.begin(), text.end(), [](char c) {
           return scrivalen::isAsciiLetter(c) || scrivalen::isAsciiDigit(c);
         });
}

[[noreturn]] void failUnknownFormat(std::string_view name, const std::string& remedy) {
  throw UsageError("there is no format '" + std::string(name) + "'" +
                   suggestion(name, formatNames(), "; use one of " + joined(formatNames(), ", ")) + remedy);
}

const Format& formatByExtension(const std::string& file) {
  const std::size_t dot = file.find_last_of("./\\");
  const bool hasExtension = dot != std::string::npos && file[dot] == '.';
  const std::string extension = hasExtension ? file.substr(dot + 1) : "";
  if (const Format* const format = findFormat(extension)) {
    return *format;
  }
  if (file == "-") {
    throw UsageError("standard output needs a format; use -o FORMAT:-, such as -o text:-");
  }
  if (scrivalen::isFolder(scrivalen::widePath(file))) {
    throw UsageError("the output '" + file + "' is a folder; use --output-dir FOLDER --to FORMAT, or -o FILE");
  }
  if (findFormat(file)) {
    throw UsageError("the output '" + file + "' has no extension; for standard output use -o " + file +
                     ":-, for a file of that name -o FORMAT:FILE");
  }
  throw UsageError("the format of '" + file + "' is unknown" +
                   suggestion(extension, formatExtensions(),
                              "; use ." + joined(formatExtensions(), " .") + ", or FORMAT:FILE",
                              file.substr(0, file.size() - extension.size())));
}

}  // namespace

OutputRequest outputRequest(const std::string& argument) {
  const std::size_t colon = argument.find(':');
  const std::string prefix = colon == std::string::npos ? "" : argument.substr(0, colon);
  OutputRequest request{isWord(prefix) ? findFormat(prefix) : nullptr, argument};
  if (request.format) {
    request.name = argument.substr(colon + 1);
  }
  if (request.name.empty()) {
    throw UsageError("the output '" + argument + "' has no file name; use -o FILE or -o FORMAT:FILE");
  }
  if (!request.format) {
    if (isWord(prefix)) {
      failUnknownFormat(prefix, " (a file of that name is './" + argument + "')");
    }
    request.format = &formatByExtension(argument);
  }
  return request;
}

std::vector<const Format*> formatsOf(const std::vector<std::string>& lists) {
  std::vector<const Format*> formats;
  for (const std::string& list : lists) {
    for (const std::string_view name : split(list, ',')) {
      if (name.empty()) {
        throw UsageError("--to takes formats with commas and no blanks between them, such as html,pdf, not '" + list +
                         "'");
      }
      const Format* const format = findFormat(name);
      if (!format) {
        failUnknownFormat(name, "");
      }
      if (std::find(formats.begin(), formats.end(), format) == formats.end()) {
        formats.push_back(format);
      }
    }
  }
  return formats;
}

OutputRequest outputInFolder(const std::string& folder, const std::string& input, const Format& format) {
  std::wstring path = scrivalen::widePath(folder);
  if (scrivalen::kPathSeparators.find(path.back()) == std::wstring_view::npos) {
    path += scrivalen::kPathSeparator;
  }
  path += withoutExtension(scrivalen::fileNameOf(scrivalen::widePath(input)));
  const std::string_view extension = split(format.extensions, ' ').front();
  return {&format, scrivalen::narrowPath(path).append(".").append(extension)};
}

}  // namespace scrivalen::command
