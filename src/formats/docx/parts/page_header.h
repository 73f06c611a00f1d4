#pragma once

#include "document/model/warnings.h"
#include "document/pictures/header_image.h"
#include "document/pictures/waiting_pictures.h"
#include "document/settings/settings.h"
#include "document/word/page_twips.h"
#include "output/archive/zip_writer.h"

#include <compare>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::docx {

/// The header and the footer of each page, as "header", "header-image" and "footer" say. Each is a part of its own,
/// which is written after the text. Sections with the same header share it.
class PageHeader {
 public:
  // They are kept until the end.
  static constexpr std::size_t kMostParts = 1000;
  static constexpr std::size_t kMostNameBytes = 1 << 20;  ///< of the names of sections together

  /// @param settings, pictures, warnings  not owned; must outlive this object
  /// @param warnings                      gets one when the picture cannot be used, or a part has to be without a name
  PageHeader(const FormatSettings& settings, const PageTwips& paper, WaitingPictures& pictures,
             OutputWarnings& warnings);

  /// Where the header begins, in twips from the top of the paper.
  int fromTop() const { return fromTop_; }
  /// The elements with which a section refers to its header and footer.
  std::string references(std::string_view section, int textWidth);
  std::size_t size() const { return parts_.size(); }
  bool isFooter(std::size_t part) const { return parts_[part]->isFooter; }
  /// Writes the parts, and those of their relations.
  void write(ZipWriter& archive) const;

 private:
  struct Part {
    bool isFooter;
    int textWidth;
    std::string section;  // empty where it names none

    friend auto operator<=>(const Part&, const Part&) = default;
  };

  std::string reference(Part part);
  bool hasRoomFor(const Part& part) const;
  void writePart(OutputBuffer& out, const Part& part) const;
  void writeLine(OutputBuffer& out, const Part& part, std::string_view setting) const;
  void writeImage(OutputBuffer& out, const Part& part) const;

  const FormatSettings& settings_;
  const bool isRightToLeft_;
  const HeaderImage image_;
  const std::size_t picture_;  // its number
  const int paperTextWidth_;   // that the styles of header and footer are made for
  const int imageHeight_;      // the most that it may have, in twips
  const int fromTop_;
  OutputWarnings& warnings_;
  std::map<Part, std::size_t> numbers_;
  std::vector<const Part*> parts_;  // by their numbers
  std::size_t nameBytes_ = 0;
};

}  // namespace scrivalen::document::docx
