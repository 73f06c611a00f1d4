#pragma once

#include "api/api_support.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::test {

/// A document written as help. The help compiler beside the tests records its input, which then is the help file.
struct MadeHelp : Written {
  MadeHelp() : Written("chm") {}

  void section(const char* name, const char* id = nullptr) const {
    EXPECT_EQ(scrivalen_begin_section(*this, name, id), SCRIVALEN_OK);
  }
  void linkParagraph(const char* address) const {
    EXPECT_EQ(scrivalen_begin_paragraph(*this, nullptr), SCRIVALEN_OK);
    link(address, "link");
    end();
  }

  /// The bytes of a file that the compiler got; "none" without it.
  std::string file(std::string_view name) {
    close();
    const std::string start = std::string("[").append(name).append("]\n");
    const std::size_t at = stream.bytes.find(start);
    if (at == std::string::npos) {
      return "none";
    }
    const std::size_t begin = at + start.size();
    std::size_t end = stream.bytes.size();
    for (const std::string_view next : {"[report.hhc]", "[topic", "[picture"}) {
      end = std::min(end, stream.bytes.find(next, begin));
    }
    return stream.bytes.substr(begin, end - begin);
  }
  /// What is inside <main> of a page.
  std::string body(std::string_view name) {
    constexpr std::string_view kStart = "<main>\n";
    const std::string page = file(name);
    const std::size_t at = page.find(kStart);
    return at == std::string::npos ? page : page.substr(at + kStart.size(), page.rfind("</main>") - at - kStart.size());
  }
  /// The lists of the contents, one line an entry: its page and its name, indented by its level.
  std::string contents() {
    constexpr std::string_view kName = "<param name=\"Name\" value=\"";
    constexpr std::string_view kLocal = "<param name=\"Local\" value=\"";
    std::string entries;
    std::string name;
    std::string indent;
    std::string file = this->file("report.hhc");
    for (std::size_t at = 0; at < file.size(); at = file.find('\n', at) + 1) {
      const std::string_view line = std::string_view(file).substr(at, file.find('\n', at) - at);
      if (line == "<UL>") {
        indent += "  ";
      } else if (line == "</UL>") {
        indent.resize(indent.size() - 2);
      } else if (line.starts_with(kName)) {
        name = line.substr(kName.size(), line.size() - kName.size() - 2);
      } else if (line.starts_with(kLocal)) {
        const std::string_view local = line.substr(kLocal.size(), line.size() - kLocal.size() - 2);
        entries.append(indent).append(local).append(": ").append(name).append("\n");
      }
    }
    return entries;
  }
  std::string warnings() {
    close();
    return warningsOf(*this);
  }

 private:
  void close() { EXPECT_EQ(scrivalen_close(*this), SCRIVALEN_OK) << error(); }
};

}  // namespace scrivalen::test
