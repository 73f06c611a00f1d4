#include "formats/pdf/typeset/pages/page_maker.h"

#include "document/model/writer.h"
#include "document/run.h"
#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/structure/tagger.h"

#include <utility>

namespace scrivalen::typeset {

PageShape shapeOf(const document::Page& page) {
  return {lengthOf(page.widthPt), lengthOf(page.heightPt), lengthOf(page.topPt),
          lengthOf(page.rightPt), lengthOf(page.bottomPt), lengthOf(page.leftPt)};
}

void PageMaker::begin(const PageShape& shape) {
  shape_ = shape;
  page_ = file_.newNumber();
  canvas_.begin(shape.height);
  if (tagger_ != nullptr) {
    tagger_->beginPage(page_, canvas_);
  }
}

int PageMaker::fontResources() {
  if (fonts_ == 0) {
    fonts_ = file_.newNumber();
  }
  return fonts_;
}

void PageMaker::end() {
  if (tagger_ != nullptr) {
    tagger_->showArtifact();
  }
  decorator_.decorate(*this);
  const std::string tags = tagger_ != nullptr ? tagger_->endPage() : std::string();
  const int content = file_.newNumber();
  file_.writeStream(content, "", canvas_.content());
  std::string object = "<</Type/Page/Parent ";
  appendReference(object, tree_.add(page_));
  object += "/MediaBox[0 0 ";
  appendThousandths(object, shape_.width);
  object += ' ';
  appendThousandths(object, shape_.height);
  object += "]/Resources<</Font ";
  appendReference(object, fontResources());
  if (!forms_.empty()) {
    object.append("/XObject<<").append(forms_).append(">>");
  }
  object += ">>/Contents ";
  appendReference(object, content);
  if (!annotations_.empty()) {
    object.append("/Annots[").append(annotations_).append("]");
  }
  object += tags;
  object += ">>";
  file_.writeObject(std::exchange(page_, 0), object);
  annotations_.clear();
  links_ = 0;
  forms_.clear();
  if (run_ != nullptr && !run_->report()) {
    throw document::OutputFailure(document::Status::Cancelled, document::kCancelled);
  }
}

Place PageMaker::placeAt(Length top) const {
  return {page_, static_cast<int>(number()), (shape_.height - top) / kPoint};
}

std::string PageMaker::edgesOf(const Box& box) const {
  std::string edges;
  appendThousandths(edges, box.x);
  edges += ' ';
  appendThousandths(edges, shape_.height - box.top - box.height);
  edges += ' ';
  appendThousandths(edges, box.x + box.width);
  edges += ' ';
  appendThousandths(edges, shape_.height - box.top);
  return edges;
}

bool PageMaker::takesLink(std::string_view address) {
  const Standard standard = file_.standard();
  const bool isTaken = links_ < longestArray(standard) && address.size() <= longestString(standard);
  linksLeftOut_ += isTaken ? 0 : 1;
  return isTaken;
}

int PageMaker::link(const Box& box, const StyledText& text, int link, std::int64_t key) {
  const std::string_view address = text.links[static_cast<std::size_t>(link)].address;
  std::string object = "<</Type/Annot/Subtype/Link/F 4/Border[0 0 0]/Rect[";
  object.append(edgesOf(box)).append("]");
  if (address.starts_with('#')) {
    object += "/Dest";
    appendString(object, address.substr(1));
  } else {
    object += "/A<</S/URI/URI";
    appendString(object, address);
    object += ">>";
  }
  // ISO 14289-1, 7.18.5.
  if (tagger_ != nullptr) {
    object += "/Contents";
    appendText(object, fittingText(text.descriptionOf(link), longestString(file_.standard())));
  }
  if (key >= 0) {
    object += "/StructParent ";
    appendInteger(object, key);
  }
  object += ">>";
  const int number = file_.newNumber();
  file_.writeObject(number, object);
  ++links_;
  annotations_ += annotations_.empty() ? "" : " ";
  appendReference(annotations_, number);
  return number;
}

void PageMaker::image(const Box& box, int object, int orientation) {
  const std::string name = std::string(1, 'I').append(std::to_string(object));
  canvas_.image(pictureMatrix(orientation, box.x, shape_.height - box.top - box.height, box.width, box.height), name);
  useForm(name, object);
}

void PageMaker::useForm(std::string_view name, int object) {
  std::string entry;
  appendName(entry, name);
  entry += ' ';
  if (forms_.find(entry) == forms_.npos) {
    forms_ += entry;
    appendReference(forms_, object);
  }
}

}  // namespace scrivalen::typeset
