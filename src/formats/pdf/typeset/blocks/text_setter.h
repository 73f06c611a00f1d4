#pragma once

#include "document/model/event.h"
#include "formats/pdf/typeset/file/outline.h"
#include "formats/pdf/typeset/pages/flow.h"
#include "formats/pdf/typeset/pages/text_drawer.h"
#include "formats/pdf/typeset/text/paragraph.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace scrivalen::typeset {

/// How a block of text is set.
struct BlockRule {
  document::Align align = document::Align::Auto;
  Length before = 0;  ///< the least space before it, and after it
  Length after = 0;
  Length leading = 1300;  ///< in thousandths of the text's size
  TextStyle usual = {};   ///< of a line without text
  bool keepsBlanks = false;
  bool isKerned = true;
  bool staysWithNext = false;  ///< on the page of what comes next
  Length smallestSize = 0;     ///< in which it is set rather than dividing a word; 0: in no other than its own
  Length padding = 0;          ///< between the text and the edges of its shade
  std::optional<Rgb> shade = std::nullopt;
  std::string_view role = "P";  ///< of its tag
};

/// A place in the outline.
struct OutlineEntry {
  int level;
  std::string text;
};

/// What is drawn beside the first line of a text: the marker of a list's item.
struct Marker {
  std::string text;  ///< UTF-8
  TextStyle style;
  Length right;  ///< where it ends
  Element element = {};
};

/// Sets blocks of text line by line. A page never ends after a heading, and a line of a paragraph is never alone on its
/// page.
class TextSetter {
 public:
  /// All are not owned and must outlive this object.
  /// @param tagger  null: the document has no tags
  TextSetter(Flow& flow, PageMaker& pages, Shaper& shaper, TextDrawer& drawer, Outline& outline,
             Tagger* tagger = nullptr)
      : flow_(flow), pages_(pages), shaper_(shaper), drawer_(drawer), outline_(outline), tagger_(tagger) {}

  void addMarker(Marker marker) { markers_.push_back(std::move(marker)); }
  bool hasMarkers() const { return !markers_.empty(); }
  void set(StyledText text, const BlockRule& rule, std::optional<OutlineEntry> entry = std::nullopt);
  /// Sets a rule. After a heading it waits with it.
  void setRule();
  /// Sets what waits for the next block, which is not a text.
  /// @param height  what of that block has to be on the same page
  /// @param before  the least space before that block
  void setWaiting(Length height, Length before = 0);
  /// Leaves at least this much space after the last block.
  void space(Length height);
  /// Whether a marker that waits ends there.
  bool hasMarkerAt(Length right) const { return !markers_.empty() && markers_.back().right == right; }
  /// Draws the markers that wait beside a block that is not a text.
  void drawMarkers(Length baseline, bool isMirrored);

 private:
  struct Waiting {
    StyledText text;
    SetText set;
    BlockRule rule;
    Length left;
    Length width;
    std::optional<OutlineEntry> entry;
    std::vector<Marker> markers;
    std::size_t backdrops;  // that were open around it
    bool isMirrored;        // indented on the right
    Element element = {};
    bool isRule = false;
  };

  bool makeWordsFit(StyledText& text, const BlockRule& rule, LineRule words);
  void draw(const Waiting& block);
  void drawLine(const Waiting& block, std::size_t line, std::size_t backdrops, TextTags* tags);
  std::size_t linesForPage(const Waiting& block, std::size_t first) const;
  void wait(Waiting block);
  Waiting ruleHere();
  void drawRule(const Waiting& rule);
  Length waitingHeight(Length gap, std::size_t first = 0) const;
  Length tallestPicture() const;
  void drawMarkersOf(const std::vector<Marker>& markers, Length baseline, bool isMirrored);

  Flow& flow_;
  PageMaker& pages_;
  Shaper& shaper_;
  TextDrawer& drawer_;
  Outline& outline_;
  Tagger* tagger_;
  std::vector<Waiting> waiting_;
  std::vector<Marker> markers_;
};

}  // namespace scrivalen::typeset
