#pragma once

#include "scrivalen/rtf_doc.h"
#include "support/files.h"
#include "support/memory_file.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// A host's file that stores the bytes of each call separately.
struct CallsFile : OutputFile {
  void Write(const void* data, std::size_t size) override { calls.emplace_back(static_cast<const char*>(data), size); }

  std::vector<std::string> calls;
};

/// The bytes that an action writes to the body of an open document.
template <typename Action>
std::string written(Action action, int conforming = 0) {
  MemoryFile file;
  RTFdoc doc;
  doc.SetConforming(conforming);
  doc.BegDoc(&file, L"T", 0);
  file.bytes.clear();
  action(doc);
  return file.bytes;
}

/// The same through a file on disk.
template <typename Action>
std::string writtenOnDisk(Action action, int conforming = 0) {
  const TemporaryFolder folder;
  ReportFile file;
  EXPECT_TRUE(file.Open((folder / L"a.rtf").c_str()));
  RTFdoc doc;
  doc.SetConforming(conforming);
  doc.BegDoc(&file, L"T", 0);
  const auto begin = static_cast<std::size_t>(file.Position());
  action(doc);
  EXPECT_TRUE(file.Close());
  return bytesOf(folder / L"a.rtf").substr(begin);
}

/// The bytes of each call that an action in an open document makes on its file.
template <typename Action>
std::vector<std::string> callsOf(Action action, int conforming = 0) {
  CallsFile file;
  RTFdoc doc;
  doc.SetConforming(conforming);
  doc.BegDoc(&file, L"T", 0);
  file.calls.clear();
  action(doc);
  return file.calls;
}

inline std::string times(std::size_t count, std::string_view bytes) {
  std::string all;
  for (; count > 0; --count) {
    all += bytes;
  }
  return all;
}

inline constexpr std::string_view kColorTable =
    "{\\colortbl;\\red0\\green0\\blue0;\\red0\\green0\\blue255;\\red0\\green255\\blue255;\\red0\\green255\\blue0;"
    "\\red255\\green0\\blue255;\\red255\\green0\\blue0;\\red255\\green255\\blue0;\\red255\\green255\\blue255;"
    "\\red0\\green0\\blue128;\\red0\\green128\\blue128;\\red0\\green128\\blue0;\\red128\\green0\\blue128;"
    "\\red128\\green0\\blue0;\\red128\\green128\\blue0;\\red128\\green128\\blue128;\\red192\\green192\\blue192;}";

inline constexpr const char* kRow =
    "{\\trowd\\trgaph108\\trwWidth5000\\trftsWidth2\\trbrdrt\\brdrs\\brdrw10 \\trbrdrl\\brdrs\\brdrw10 "
    "\\trbrdrb\\brdrs\\brdrw10 \\trbrdrr\\brdrs\\brdrw10 \\trbrdrh\\brdrs\\brdrw10 \\trbrdrv\\brdrs\\brdrw10\r\n";
inline constexpr const char* kBorders =
    "\\clbrdrt\\brdrs\\brdrw10 \\clbrdrl\\brdrs\\brdrw10 \\clbrdrb\\brdrs\\brdrw10 \\clbrdrr\\brdrs\\brdrw10 "
    "\\cltxlrtb \r\n";
inline constexpr const char* kRowRest = "\\nowidctlpar\\widctlpar\\adjustright\r\n";

}  // namespace scrivalen::test
