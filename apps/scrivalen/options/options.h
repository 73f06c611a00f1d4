#pragma once

#include "formats.h"
#include "readers/csv/csv_options.h"
#include "readers/input_encoding.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::command {

enum class InputFormat { Markdown, Csv, Tsv };

struct OutputRequest {
  const Format* format = nullptr;
  std::string name;  ///< a path; "-" is standard output
};

/// An input and what is made of it.
struct Job {
  std::string input;  ///< a path; "-" is standard input
  InputFormat format = InputFormat::Markdown;
  std::optional<char> delimiter;  ///< of CSV; nothing: found from the first rows
  std::vector<OutputRequest> outputs;
};

/// The options of a run. Texts are UTF-8.
struct Options {
  std::vector<Job> jobs;
  std::optional<std::string> title;
  std::vector<std::pair<std::string, std::string>> properties;  ///< names, without percent signs, and values
  std::string templateFile;                                     ///< its path; empty: none
  std::string stylesFile;                                       ///< empty: none
  std::string referenceFile;                                    ///< the same
  std::vector<std::pair<std::string, std::string>> settings;    ///< of the document, as given
  std::string separator;                                        ///< empty: aligned columns
  InputEncoding encoding = InputEncoding::Default;
  CsvOptions csv;
  bool landscape = false;
  bool singleByte = false;
  bool contents = false;
  bool unsafe = false;  ///< pass on raw HTML and all addresses of Markdown
  bool strict = false;  ///< a warning is a failure
  bool quiet = false;
  bool verbose = false;
  bool listTemplates = false;
  bool help = false;
  bool version = false;
  std::vector<std::string> warnings;  ///< about options without effect
};

}  // namespace scrivalen::command
