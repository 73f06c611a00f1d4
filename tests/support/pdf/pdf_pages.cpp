#include "support/pdf/pdf_pages.h"

#include <cmath>
#include <utility>

namespace scrivalen::test {
namespace {

using Kind = PdfValue::Kind;

constexpr int kDeepest = 1000;
constexpr double kTolerance = 0.1;  // a tenth of a point, in which content is written

template <typename Item>
void append(std::vector<Item>& all, const std::vector<Item>& more) {
  all.insert(all.end(), more.begin(), more.end());
}

}  // namespace

std::vector<std::string> PdfPage::lines() const {
  std::vector<std::string> lines;
  double y = -1;
  for (const PdfText& text : content.texts) {
    if (lines.empty() || std::abs(text.y - y) > kTolerance) {
      lines.emplace_back();
      y = text.y;
    }
    lines.back() += text.text;
  }
  return lines;
}

PdfPages::PdfPages(std::string file) : file_(std::move(file)), problems_(file_.problems()) {
  const PdfValue trailer = pdfValueOf(file_.trailer());
  information_ = resolved(trailer.at("Info"));
  const PdfValue catalog = resolved(trailer.at("Root"));
  expect(catalog.at("Type").isName("Catalog"), "it has no catalog");
  const PdfValue& tree = catalog.at("Pages");
  const std::size_t count = readPages(tree, 0, 0);
  expect(count > 0, "it has no page");
  if (catalog.has("Names")) {
    readPlaces(resolved(catalog.at("Names")).at("Dests"), 0);
  }
  if (catalog.has("Outlines")) {
    readOutline(catalog.at("Outlines"), 0);
  }
}

bool PdfPages::expect(bool good, const std::string& problem) {
  if (!good) {
    problems_.push_back(problem);
  }
  return good;
}

PdfValue PdfPages::resolved(const PdfValue& value) {
  if (value.reference() == 0) {
    return value;
  }
  PdfValue object = pdfValueOf(file_.object(value.reference()));
  expect(object.kind != Kind::Null, "object " + std::to_string(value.reference()) + " is missing or no value");
  return object;
}

std::size_t PdfPages::readPages(const PdfValue& node, int parent, int depth) {
  const PdfValue object = resolved(node);
  expect(object.at("Parent").reference() == parent, "a page or node has another parent");
  if (object.at("Type").isName("Page")) {
    pageNumbers_[node.reference()] = pages_.size();
    readPage(object);
    return 1;
  }
  if (!expect(object.at("Type").isName("Pages") && depth < kDeepest, "the page tree has something else in it")) {
    return 0;
  }
  std::size_t count = 0;
  for (const PdfValue& kid : object.at("Kids").items) {
    count += readPages(kid, node.reference(), depth + 1);
  }
  expect(object.at("Count").number == static_cast<double>(count), "a node has another number of pages");
  return count;
}

void PdfPages::readPage(const PdfValue& page) {
  PdfPage made;
  const std::vector<double> box = page.at("MediaBox").numbers();
  if (expect(box.size() == 4, "a page has no size")) {
    made.width = box[2];
    made.height = box[3];
  }
  const int content = page.at("Contents").reference();
  expect(file_.has(content), "a page has no content");
  made.content = readPdfContent(file_, file_.stream(content), page.at("Resources"), problems_);
  checkContent(made);
  for (const PdfValue& annotation : page.at("Annots").items) {
    made.links.push_back(readLink(resolved(annotation), made));
  }
  pages_.push_back(std::move(made));
}

void PdfPages::checkContent(const PdfPage& page) {
  for (const PdfText& text : page.content.texts) {
    expect(text.x >= 0 && text.x <= page.width && text.y >= 0 && text.y <= page.height, "off the page: " + text.text);
  }
}

PdfLink PdfPages::readLink(const PdfValue& annotation, const PdfPage& page) {
  PdfLink link;
  expect(annotation.at("Subtype").isName("Link"), "an annotation is no link");
  if (annotation.has("Dest")) {
    link.address = "#" + annotation.at("Dest").text;
  } else {
    const PdfValue& action = annotation.at("A");
    expect(action.at("S").isName("URI"), "a link has another action");
    link.address = action.at("URI").text;
  }
  const std::vector<double> box = annotation.at("Rect").numbers();
  if (expect(box.size() == 4, "a link has no place")) {
    link.left = box[0];
    link.bottom = box[1];
    link.right = box[2];
    link.top = box[3];
  }
  expect(link.left < link.right && link.bottom < link.top, "a link covers nothing");
  expect(link.left >= -kTolerance && link.bottom >= -kTolerance && link.right <= page.width + kTolerance &&
             link.top <= page.height + kTolerance,
         "a link is off the page");
  return link;
}

PdfPlace PdfPages::placeOf(const PdfValue& destination) {
  const std::vector<PdfValue>& items = destination.items;
  const auto page = items.empty() ? pageNumbers_.end() : pageNumbers_.find(items[0].reference());
  if (!expect(page != pageNumbers_.end() && items.size() == 5 && items[1].isName("XYZ"), "a place is on no page")) {
    return {};
  }
  expect(items[3].number >= 0 && items[3].number <= pages_[page->second].height, "a place is off its page");
  return {page->second, items[3].number};
}

void PdfPages::readPlaces(const PdfValue& node, int depth) {
  const PdfValue object = resolved(node);
  if (!expect(depth < kDeepest, "the name tree is too deep")) {
    return;
  }
  for (const PdfValue& kid : object.at("Kids").items) {
    readPlaces(kid, depth + 1);
  }
  const std::vector<PdfValue>& names = object.at("Names").items;
  for (std::size_t i = 0; i + 1 < names.size(); i += 2) {
    expect(places_.empty() || places_.rbegin()->first < names[i].text, "the places are not sorted by name");
    places_[names[i].text] = placeOf(names[i + 1]);
  }
}

// Returns the number of entries under a node.
std::size_t PdfPages::readOutline(const PdfValue& parent, int depth) {
  const PdfValue node = resolved(parent);
  if (!expect(depth < kDeepest, "the outline is too deep")) {
    return 0;
  }
  std::size_t count = 0;
  int previous = 0;
  PdfValue next = node.at("First");
  while (next.reference() != 0 && outline_.size() < file_.size()) {
    const PdfValue entry = resolved(next);
    expect(entry.at("Parent").reference() == parent.reference() && entry.at("Prev").reference() == previous,
           "an entry of the outline has another parent or another one before it");
    outline_.push_back({depth, pdfTextOf(entry.at("Title").text), placeOf(entry.at("Dest"))});
    ++count;
    const std::size_t below = readOutline(next, depth + 1);
    expect(std::abs(entry.at("Count").number) == static_cast<double>(below), "an entry has another number below it");
    previous = next.reference();
    next = entry.at("Next");
  }
  expect(node.at("Last").reference() == previous, "the outline has another last entry");
  return count;
}

std::vector<std::string> PdfPages::lines() const {
  std::vector<std::string> all;
  for (const PdfPage& page : pages_) {
    append(all, page.lines());
  }
  return all;
}

std::vector<PdfText> PdfPages::texts() const {
  std::vector<PdfText> all;
  for (const PdfPage& page : pages_) {
    append(all, page.content.texts);
  }
  return all;
}

std::vector<PdfLink> PdfPages::links() const {
  std::vector<PdfLink> all;
  for (const PdfPage& page : pages_) {
    append(all, page.links);
  }
  return all;
}

}  // namespace scrivalen::test
