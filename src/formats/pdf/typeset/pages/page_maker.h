#pragma once

#include "document/settings/page.h"
#include "formats/pdf/typeset/file/named_places.h"
#include "formats/pdf/typeset/file/page_tree.h"
#include "formats/pdf/typeset/pages/canvas.h"
#include "formats/pdf/typeset/text/styled_text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document {
class Run;
}

namespace scrivalen::typeset {

/// The size of a page and its margins.
struct PageShape {
  Length width = 0;
  Length height = 0;
  Length top = 0;
  Length right = 0;
  Length bottom = 0;
  Length left = 0;

  Length textWidth() const { return width - left - right; }
  Length textHeight() const { return height - top - bottom; }
  Length textBottom() const { return height - bottom; }
  /// The same paper on its side.
  PageShape turned() const { return {height, width, top, right, bottom, left}; }
};

PageShape shapeOf(const document::Page& page);

/// A rectangle from the upper left corner of the page.
struct Box {
  Length x;
  Length top;
  Length width;
  Length height;
};

class PageMaker;
class Tagger;

/// Adds the header and footer to a page that is full, before it is written.
class PageDecorator {
 public:
  virtual ~PageDecorator() = default;
  virtual void decorate(PageMaker& page) = 0;
  /// A heading begins on the page that is open.
  virtual void noteHeading(int level, std::string_view text) = 0;
};

/// Writes pages, one at a time.
class PageMaker {
 public:
  /// All are not owned and must outlive this object. Each page is reported to the run, which may be null.
  /// @param tagger  null: the document has no tags
  PageMaker(PdfFile& file, PageDecorator& decorator, document::Run* run, Tagger* tagger = nullptr)
      : file_(file), tree_(file), decorator_(decorator), run_(run), tagger_(tagger) {}

  bool isOpen() const { return page_ != 0; }
  void begin(const PageShape& shape);
  /// Writes the page. Raises OutputFailure if the document is cancelled.
  void end();
  Canvas& canvas() { return canvas_; }
  const PageShape& shape() const { return shape_; }
  /// Of the page that is open; the first has number 1.
  std::int64_t number() const { return tree_.count() + 1; }

  /// Whether the page may have one more link, to this address, by the file's standard. Counts those that it may not
  /// have.
  bool takesLink(std::string_view address);
  std::size_t linksLeftOut() const { return linksLeftOut_; }
  /// Makes a box lead to where a link of a text does.
  /// @param key  of its structure element; none below 0
  /// @return the number of its annotation
  int link(const Box& box, const StyledText& text, int link, std::int64_t key = -1);
  /// Draws an image object.
  void image(const Box& box, int object, int orientation);
  /// Names a form or image object that the page draws.
  void useForm(std::string_view name, int object);
  Place placeAt(Length top) const;
  /// The edges of a box as PDF counts them, from the lower left corner of the page.
  std::string edgesOf(const Box& box) const;

  /// Reports a heading that begins on the page to the decorator.
  void noteHeading(int level, std::string_view text) { decorator_.noteHeading(level, text); }

  /// The number of the object that names the fonts, which all pages share.
  int fontResources();
  /// Writes the tree of the pages. @return the number of its root
  int finish() { return tree_.finish(); }
  std::int64_t count() const { return tree_.count(); }

 private:
  PdfFile& file_;
  PageTree tree_;
  PageDecorator& decorator_;
  document::Run* run_;
  Tagger* tagger_;
  Canvas canvas_;
  PageShape shape_;
  int page_ = 0;
  int fonts_ = 0;
  std::string annotations_;
  std::size_t links_ = 0;  // of the page
  std::size_t linksLeftOut_ = 0;
  std::string forms_;
};

}  // namespace scrivalen::typeset
