#pragma once

#include "document/model/event.h"
#include "document/pictures/picture.h"
#include "formats/xlsx/workbook/cell_formats.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::xlsx {

/// A part of a text that has one font. It ends where the next one begins.
struct TextRun {
  std::size_t begin;
  Font font;
};

struct TextLink {
  std::string address;
  std::string title;  ///< may be empty
};

/// A picture and its size in points.
struct PlacedPicture {
  std::shared_ptr<const document::Picture> picture;
  double width;
  double height;
  std::string text;  ///< the alternative
};

/// The content of a cell, as clean UTF-8; a line feed is a line break.
struct RichText {
  std::string text;
  std::vector<TextRun> runs;    ///< the first at 0, if there is a text
  std::vector<TextLink> links;  ///< at most one: that of the cell
  std::vector<std::string> anchors;
  std::vector<PlacedPicture> pictures;
  std::uint32_t fill = kNoColor;  ///< the background of the whole text, if it has one
  std::size_t plainLinks = 0;     ///< that are texts with addresses, as a cell is a link as a whole or not at all
  std::size_t plainParts = 0;     ///< how many lost their backgrounds

  bool isEmpty() const { return text.empty() && pictures.empty(); }
};

/// The text of a run.
std::string_view partOf(const RichText& text, std::size_t run);

/// Collects the text of a block or cell. The only link of a short text is that of its cell. In other texts a link is
/// followed by its address, because a cell is a link as a whole or not at all. So it is with backgrounds: a part of a
/// text has none, and then the text's usual colour too, which can be read without it.
class RichTextCollector : public document::EventSink {
 public:
  /// Begins a text whose usual font this is.
  void begin(const Font& font);
  void write(const document::Event& event) override;
  void add(std::string_view utf8);
  bool isEmpty() const { return text_.isEmpty(); }
  /// The text so far, which is then empty.
  RichText take();

 private:
  void addPicture(const document::Event& event);
  void beginColored(const document::Event& event);
  void endColored();
  void settleBackgrounds();
  void beginSpan(document::Span span);
  void beginLink(const document::Event& link);
  void endLink();
  void settleLinks();
  void addAddress(std::size_t at, std::string_view address);

  RichText text_;
  std::vector<Font> fonts_ = std::vector<Font>(1);
  struct LinkedPart {
    TextLink link;
    std::size_t begin;
    std::size_t end;
  };
  std::vector<LinkedPart> links_;
  struct ColoredPart {
    std::size_t begin;
    std::size_t end;
    std::uint32_t background;  // kNoColor: none
    std::uint32_t color;
    std::uint32_t outerColor;
    bool isOpen = true;
  };
  std::vector<ColoredPart> colored_;
  bool isInLink_ = false;
};

}  // namespace scrivalen::xlsx
