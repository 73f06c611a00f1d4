#include "document/tables/shown_cell.h"

#include "document/pictures/picture.h"
#include "text/columns/line_breaks.h"

#include <algorithm>

namespace scrivalen::document {
namespace {

constexpr double kPointsPerColumn = 5.5;  // of text in its usual size

class Content : public EventSink {
 public:
  void write(const Event& event) override {
    if (event.kind == EventKind::Image && event.picture != nullptr) {
      const double width = event.picture->shownSize(event.points).widthPt;
      shown_.widestPicture = std::max(shown_.widestPicture, width);
      picturesOfLine_ += width;
    } else if (event.kind == EventKind::Text || event.kind == EventKind::Image) {
      addText(event.text);
    }
  }

  ShownCell take() {
    endLine();
    return std::move(shown_);
  }

 private:
  void addText(std::string_view text) {
    for (std::size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
      shown_.text += text.substr(0, end);
      endLine();
      shown_.text += '\n';
      line_ = shown_.text.size();
      text.remove_prefix(end + 1);
    }
    shown_.text += text;
  }

  void endLine() {
    if (picturesOfLine_ > 0) {
      const double text = extentOf(std::string_view(shown_.text).substr(line_)).widestLine * kPointsPerColumn;
      shown_.widestPictures = std::max(shown_.widestPictures, picturesOfLine_ + text);
      picturesOfLine_ = 0;
    }
  }

  ShownCell shown_;
  std::size_t line_ = 0;  // where it begins in the text
  double picturesOfLine_ = 0;
};

}  // namespace

ShownCell shownCell(const Cell& cell) {
  Content content;
  cell.replay(content);
  return content.take();
}

}  // namespace scrivalen::document
