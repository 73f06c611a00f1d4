#include "formats/pdf/typeset/pictures/picture_writer.h"

#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/pictures/image_data.h"
#include "formats/pdf/typeset/pictures/jpeg_data.h"
#include "formats/pdf/typeset/pictures/png_data.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace scrivalen::typeset {

using document::Picture;

namespace {

constexpr std::uint32_t kLongestSide = 65'535;  // MuPDF draws nothing of a page that has a picture with a longer one

}  // namespace

std::optional<int> PictureWriter::write(const Picture& picture, std::string& reason) {
  Kept kept;
  if (const auto found = byBytes_.find(picture.bytes()); found != byBytes_.end()) {
    kept_.splice(kept_.begin(), kept_, found->second);
    kept = kept_.front();
  } else {
    kept = writeNew(picture);
    keep(kept);
  }
  if (kept.number == 0) {
    reason = "The picture ";
    reason.append(kept.wrong) += '.';
    return std::nullopt;
  }
  return kept.number;
}

PictureWriter::Kept PictureWriter::writeNew(const Picture& picture) {
  if (std::max(picture.width(), picture.height()) > kLongestSide) {
    return {picture.shared_from_this(), 0, "has more than 65,535 pixels a side, which not all readers of PDF draw"};
  }
  PictureData data;
  const bool isJpeg = picture.format() == Picture::Format::Jpeg;
  const bool hasCmyk = file_.standard() == Standard::None;
  const bool isOpaque = file_.standard() == Standard::A1b;
  const std::string_view wrong =
      isJpeg ? encodeJpeg(picture.bytes(), data, hasCmyk) : encodePng(picture.bytes(), data, isOpaque);
  if (!wrong.empty()) {
    return {picture.shared_from_this(), 0, wrong};
  }
  if (data.mask) {
    const int mask = file_.newNumber();
    file_.writeEncodedStream(mask, data.mask->entries, data.mask->bytes());
    data.colors.entries += "/SMask ";
    appendReference(data.colors.entries, mask);
  }
  const int number = file_.newNumber();
  file_.writeEncodedStream(number, data.colors.entries, data.colors.bytes());
  return {picture.shared_from_this(), number, {}};
}

void PictureWriter::keep(Kept kept) {
  const std::size_t size = kept.picture->bytes().size();
  if (size > kMostBytes) {
    return;
  }
  while (keptBytes_ + size > kMostBytes) {
    const std::string_view oldest = kept_.back().picture->bytes();
    keptBytes_ -= oldest.size();
    byBytes_.erase(oldest);
    kept_.pop_back();
  }
  kept_.push_front(std::move(kept));
  keptBytes_ += size;
  byBytes_.emplace(kept_.front().picture->bytes(), kept_.begin());
}

}  // namespace scrivalen::typeset
