#pragma once

#include "document/model/warnings.h"
#include "document/pictures/header_image.h"
#include "document/pictures/waiting_pictures.h"
#include "document/settings/settings.h"
#include "document/word/page_twips.h"
#include "output/archive/zip_writer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::docx {

/// The header and the footer of each page, as "header", "header-image" and "footer" say. Each is a part of its own,
/// which is written after the text.
class PageHeader {
 public:
  /// @param settings, pictures  not owned; must outlive this object
  /// @param warnings            gets one when the picture cannot be used
  PageHeader(const FormatSettings& settings, const PageTwips& paper, WaitingPictures& pictures,
             OutputWarnings& warnings);

  /// Where the header begins, in twips from the top of the paper.
  int fromTop() const { return fromTop_; }
  /// The elements with which a section refers to its header and footer.
  std::string references(std::string_view section, int textWidth);
  std::size_t size() const { return parts_.size(); }
  bool isFooter(std::size_t part) const { return parts_[part].isFooter; }
  /// Writes the parts, and those of their relations.
  void write(ZipWriter& archive) const;

 private:
  struct Part {
    bool isFooter;
    int textWidth;
    std::string section;  // empty where it names none

    friend bool operator==(const Part&, const Part&) = default;
  };

  std::string reference(Part part);
  void writePart(OutputBuffer& out, const Part& part) const;
  void writeImage(OutputBuffer& out, const Part& part) const;

  const FormatSettings& settings_;
  const HeaderImage image_;
  const std::size_t picture_;  // its number
  const int paperTextWidth_;   // that the styles of header and footer are made for
  const int imageHeight_;      // the most that it may have, in twips
  const int fromTop_;
  std::vector<Part> parts_;
};

}  // namespace scrivalen::document::docx
