#pragma once

#include "readers/document_sink.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// Keeps what is in a heading until its end, where its id is. It takes no blocks: there are none in a heading.
class HeadingContent final : public DocumentSink {
 public:
  void beginHeading(int, const std::string&) override {}
  void beginParagraph() override {}
  void beginQuote() override {}
  void beginList(bool, int, bool) override {}
  void beginItem(Task) override {}
  void beginCode(const std::string&) override {}
  void beginTable() override {}
  void beginRow(bool) override {}
  void beginCell(Align) override {}
  void cell(std::string_view) override {}
  void rule() override {}

  void beginSpan(Span span) override { add({Kind::Span, span, {}, {}}); }
  void beginLink(const std::string& address, const std::string& title) override {
    add({Kind::Link, {}, address, title});
  }
  void end() override { add({Kind::End, {}, {}, {}}); }
  void text(std::string_view text) override { add({Kind::Text, {}, std::string(text), {}}); }
  void image(const std::string& address, const std::string& alternative) override {
    add({Kind::Image, {}, address, alternative});
  }
  void markup(std::string_view html) override { add({Kind::Markup, {}, std::string(html), {}}); }

  /// In bytes, about.
  std::size_t size() const { return size_; }
  /// Passes on the content, and keeps it no longer.
  void moveTo(DocumentSink& sink);

 private:
  enum class Kind : std::uint8_t { Span, Link, End, Text, Image, Markup };
  struct Part {
    Kind kind;
    Span span;
    std::string first;
    std::string second;
  };

  void add(Part part);
  static void pass(const Part& part, DocumentSink& sink);

  std::vector<Part> parts_;
  std::size_t size_ = 0;
};

}  // namespace scrivalen::command
