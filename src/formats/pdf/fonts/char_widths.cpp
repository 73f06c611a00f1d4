#include "formats/pdf/fonts/char_widths.h"

#include <algorithm>
#include <limits>

namespace scrivalen::pdf {
namespace {

// The glyph widths of Times-Roman divided by about 478, for the codes 32 to 126. They are used for all fonts.
constexpr std::array<double, 95> kFactors = {
    0.523, 0.697, 0.854, 1.047, 1.047, 1.744, 1.629, 0.697,  // space ! " # $ % & '
    0.697, 0.697, 1.047, 1.181, 0.523, 0.697, 0.523, 0.582,  // ( ) * + , - . /
    1.047, 1.047, 1.047, 1.047, 1.047, 1.047, 1.047, 1.047,  // 0 to 7
    1.047, 1.047, 0.582, 0.582, 1.181, 1.181, 1.181, 0.929,  // 8 9 : ; < = > ?
    1.928, 1.511, 1.396, 1.396, 1.511, 1.279, 1.164, 1.511,  // @ A B C D E F G
    1.511, 0.697, 0.814, 1.511, 1.279, 1.861, 1.511, 1.511,  // H I J K L M N O
    1.164, 1.511, 1.396, 1.164, 1.279, 1.511, 1.511, 1.976,  // P Q R S T U V W
    1.511, 1.511, 1.279, 0.697, 0.582, 0.697, 0.982, 1.047,  // X Y Z [ \ ] ^ _
    0.697, 0.929, 1.047, 0.929, 1.047, 0.929, 0.697, 1.047,  // ` a b c d e f g
    1.047, 0.582, 0.582, 1.047, 0.582, 1.629, 1.047, 1.047,  // h i j k l m n o
    1.047, 1.047, 0.697, 0.814, 0.582, 1.047, 1.047, 1.511,  // p q r s t u v w
    1.047, 1.047, 0.929, 1.005, 0.419, 1.005, 1.132};        // x y z { | } ~

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

std::int32_t rounded(double width) {
  return static_cast<std::int32_t>(std::clamp(width + 0.5, double{-kMax}, double{kMax}));
}

std::int32_t scaled(std::int64_t advance, int size) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(advance * size, -kMax, kMax));
}

}  // namespace

CharWidths::CharWidths(float average) : other_(rounded(double{average})) {
  widths_.fill(other_);
  for (std::size_t i = 0; i < kFactors.size(); ++i) {
    widths_[kFirstCode + i] = rounded(kFactors[i] * double{average});
  }
}

CharWidths::CharWidths(const AdvanceWidths& advances, int size) : perPoint_(1000) {
  std::transform(advances.begin(), advances.end(), widths_.begin() + kFirstCode,
                 [size](std::int64_t advance) { return scaled(advance, size); });
}

}  // namespace scrivalen::pdf
