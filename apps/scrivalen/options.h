#pragma once

#include "formats.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::command {

enum class InputFormat { Markdown, Csv, Tsv };

struct OutputRequest {
  const Format* format = nullptr;
  std::string name;
};

/// What a run is asked to do. Texts are UTF-8.
struct Options {
  std::string input;
  InputFormat inputFormat = InputFormat::Markdown;
  std::vector<OutputRequest> outputs;
  std::optional<std::string> title;
  std::vector<std::pair<std::string, std::string>> properties;  ///< placeholders, percent signs and all, and values
  std::wstring templateFile;                                    ///< empty: the default
  std::string stylesFile;                                       ///< empty: none
  std::string separator;
  bool landscape = false;
  bool singleByte = false;
  bool contents = false;
  bool classic = false;
  bool unsafe = false;  ///< raw HTML and every address of Markdown are passed on
  bool quiet = false;
};

struct CommandLine {
  Options options;
  std::optional<std::string> printout;  ///< what to print instead of doing anything: the help, the version, a list
};

/// Raises UsageError.
/// @param arguments  UTF-8, without the program's name
CommandLine parseCommandLine(const std::vector<std::string>& arguments);

}  // namespace scrivalen::command
