#pragma once

#include "document/pictures/picture.h"
#include "formats/pdf/typeset/file/pdf_file.h"

#include <cstddef>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace scrivalen::typeset {

/// Writes pictures as images (PDF 1.7, 8.9.5), which have to be turned as the picture's orientation says when they are
/// drawn. The last pictures are kept, so that one on every page is written once.
class PictureWriter {
 public:
  /// @param file  not owned; must outlive this object
  explicit PictureWriter(PdfFile& file) : file_(file) {}

  /// Writes a picture, unless an equal one was written lately.
  /// @param reason  set to a sentence for a person when the picture cannot be read
  /// @return the number of its object; none when it cannot be read, and then nothing is written
  std::optional<int> write(const document::Picture& picture, std::string& reason);

 private:
  struct Kept {
    std::shared_ptr<const document::Picture> picture;
    int number;              // 0: it cannot be read
    std::string_view wrong;  // then
  };

  static constexpr std::size_t kMostBytes = std::size_t{16} << 20;

  Kept writeNew(const document::Picture& picture);
  void keep(Kept kept);

  PdfFile& file_;
  std::list<Kept> kept_;  // the one used last is first
  std::unordered_map<std::string_view, std::list<Kept>::iterator> byBytes_;
  std::size_t keptBytes_ = 0;
};

}  // namespace scrivalen::typeset
