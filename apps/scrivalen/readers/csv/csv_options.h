#pragma once

#include "readers/document_sink.h"

#include <string>
#include <vector>

namespace scrivalen::command {

/// How a table of separated values is read and shown.
struct CsvOptions {
  bool isText = false;                    ///< no cell becomes a value
  std::vector<std::string> columns = {};  ///< names, numbers from 1, and ranges of numbers such as 2-4; empty: all
  std::vector<Align> aligns = {};         ///< of the columns that are shown; those that are missing have the default
  std::vector<double> widths = {};        ///< of the columns that are shown; 0, or missing: from the content
  bool arePercent = false;                ///< the widths: columns without one share what is left of 100
};

}  // namespace scrivalen::command
