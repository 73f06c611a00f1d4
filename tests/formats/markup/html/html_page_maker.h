#pragma once

#include "document/model/writer.h"
#include "formats/markup/html/html_writer.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::document {

struct MemorySink : ByteSink {
  bool take(const char* data, std::size_t size) override {
    bytes.append(data, size);
    return true;
  }
  std::string bytes;
};

/// A page that a writer made of hand-made events.
struct HtmlResult {
  std::string page;
  std::vector<Warning> warnings;

  /// What is inside <main>.
  std::string body() const {
    constexpr std::string_view kStart = "<main>\n";
    const std::size_t begin = page.find(kStart) + kStart.size();
    return page.substr(begin, page.rfind("</main>") - begin);
  }
};

using SettingList = std::vector<std::pair<std::string, std::string>>;

inline HtmlResult htmlOf(const std::function<void(DocumentWriter&)>& write, const SettingList& list = {}) {
  Settings settings;
  for (const auto& [name, value] : list) {
    std::string reason;
    EXPECT_TRUE(settings.set(name, value, reason)) << reason;
  }
  const FormatSettings formatSettings(settings, "html");
  Warnings warnings;
  OutputWarnings outputWarnings(warnings, 0);
  MemorySink memory;
  OutputBuffer out(memory);
  const auto writer = createHtmlDocumentWriter({out, formatSettings, outputWarnings});
  writer->begin();
  write(*writer);
  writer->finish();
  out.flush();
  return {memory.bytes, warnings.all()};
}

inline std::string htmlBodyOf(const std::vector<Event>& events, const SettingList& list = {}) {
  return htmlOf(
             [&](DocumentWriter& writer) {
               for (const Event& event : events) {
                 writer.write(event);
               }
             },
             list)
      .body();
}

}  // namespace scrivalen::document
