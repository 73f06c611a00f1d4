#include "document/pictures/picture.h"

#include "document/pictures/facts.h"

#include <utility>

namespace scrivalen::document {
namespace {

constexpr std::uint64_t kMostPixels = 64'000'000;
constexpr double kPointsPerInch = 72;
constexpr double kUsualDotsPerInch = 96;

// Turned by a quarter: what is stored as a row is shown as a column (EXIF 2.3, 4.6.4).
bool isTurned(int orientation) { return orientation >= 5; }

// A resolution that no device has is a mistake.
bool isResolution(double dotsPerInch) { return dotsPerInch >= 10 && dotsPerInch <= 10'000; }

std::string_view read(std::string_view bytes, PictureFacts& facts) {
  if (isPng(bytes)) {
    return readPng(bytes, facts);
  }
  return isJpeg(bytes) ? readJpeg(bytes, facts) : "is neither PNG nor JPEG";
}

std::string_view check(const PictureFacts& facts) {
  if (facts.width == 0 || facts.height == 0) {
    return "has no pixels";
  }
  if (std::uint64_t{facts.width} * facts.height > kMostPixels) {
    return "has more than 64 megapixels";
  }
  return facts.isTooShort ? "has fewer pixels than it states" : "";
}

}  // namespace

std::shared_ptr<const Picture> Picture::read(std::string_view bytes, std::string& reason) {
  PictureFacts facts;
  std::string_view wrong = document::read(bytes, facts);
  if (wrong.empty()) {
    wrong = check(facts);
  }
  if (!wrong.empty()) {
    reason = "The picture ";
    reason.append(wrong) += '.';
    return nullptr;
  }
  // make_shared cannot reach the constructor.
  const std::shared_ptr<Picture> picture(new Picture());
  picture->format_ = isPng(bytes) ? Format::Png : Format::Jpeg;
  picture->width_ = facts.width;
  picture->height_ = facts.height;
  picture->orientation_ = facts.orientation;
  const bool isStated = isResolution(facts.dotsPerInchX) && isResolution(facts.dotsPerInchY);
  picture->widthPt_ = facts.width * kPointsPerInch / (isStated ? facts.dotsPerInchX : kUsualDotsPerInch);
  picture->heightPt_ = facts.height * kPointsPerInch / (isStated ? facts.dotsPerInchY : kUsualDotsPerInch);
  if (isTurned(facts.orientation)) {
    std::swap(picture->widthPt_, picture->heightPt_);
  }
  picture->bytes_ = bytes;
  return picture;
}

Picture::Size Picture::shownSize(double widthPt) const {
  const double scale = widthPt > 0 ? widthPt / widthPt_ : 1;
  return {widthPt_ * scale, heightPt_ * scale};
}

}  // namespace scrivalen::document
