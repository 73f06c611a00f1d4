#pragma once

#include "support/pdf/pdf_content.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// A place in a document. Pages count from 0, points from the page's lower edge.
struct PdfPlace {
  std::size_t page = 0;
  double top = 0;
};

struct PdfLink {
  std::string address;  ///< of a place: its name after "#"
  double left = 0, bottom = 0, right = 0, top = 0;
};

struct PdfPage {
  double width = 0;
  double height = 0;
  PdfContent content;
  std::vector<PdfLink> links;

  /// The texts on the page, a line of text each: those that begin on one baseline, in the order of drawing.
  std::vector<std::string> lines() const;
};

struct PdfOutlineEntry {
  int depth = 0;  ///< 0 at the outermost level
  std::string title;
  PdfPlace place;
};

/// Reads a PDF as the document writer makes it and collects whatever is wrong. Any bytes may be given. A link to a
/// place that is not in the document is no mistake of the file's.
class PdfPages {
 public:
  explicit PdfPages(std::string file);

  const std::vector<std::string>& problems() const { return problems_; }
  const std::vector<PdfPage>& pages() const { return pages_; }
  const std::vector<PdfOutlineEntry>& outline() const { return outline_; }
  const std::map<std::string, PdfPlace>& places() const { return places_; }
  /// An entry of the document's information; empty without it.
  std::string information(const std::string& key) const { return pdfTextOf(information_.at(key).text); }
  /// The lines of all pages.
  std::vector<std::string> lines() const;
  /// The texts of all pages.
  std::vector<PdfText> texts() const;
  /// The links of all pages.
  std::vector<PdfLink> links() const;

 private:
  PdfValue resolved(const PdfValue& value);
  std::size_t readPages(const PdfValue& node, int parent, int depth);
  void readPage(const PdfValue& page);
  void checkContent(const PdfPage& page);
  PdfLink readLink(const PdfValue& annotation, const PdfPage& page);
  void readPlaces(const PdfValue& node, int depth);
  PdfPlace placeOf(const PdfValue& destination);
  std::size_t readOutline(const PdfValue& parent, int depth);
  bool expect(bool good, const std::string& problem);

  PdfFileReader file_;
  std::vector<std::string> problems_;
  std::map<int, std::size_t> pageNumbers_;
  std::vector<PdfPage> pages_;
  std::vector<PdfOutlineEntry> outline_;
  std::map<std::string, PdfPlace> places_;
  PdfValue information_;
};

}  // namespace scrivalen::test
