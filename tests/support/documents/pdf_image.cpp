#include "support/documents/pdf_image.h"

#include <zlib.h>

#include <charconv>
#include <cstddef>
#include <cstdlib>

namespace scrivalen::test {
namespace {

bool has(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

// The number after a key; 0 without the key.
std::uint32_t numberAfter(std::string_view text, std::string_view key) {
  const std::size_t at = text.find(key);
  std::uint32_t number = 0;
  if (at != text.npos) {
    std::from_chars(text.data() + at + key.size(), text.data() + text.size(), number);
  }
  return number;
}

// Exactly as many bytes as expected; none if there are fewer or more.
std::optional<std::string> inflated(std::string_view compressed, std::size_t expected) {
  std::string bytes(expected + 1, '\0');
  auto size = static_cast<uLongf>(bytes.size());
  const int result =
      uncompress(reinterpret_cast<Bytef*>(bytes.data()), &size, reinterpret_cast<const Bytef*>(compressed.data()),
                 static_cast<uLong>(compressed.size()));
  if (result != Z_OK || size != expected) {
    return std::nullopt;
  }
  bytes.resize(expected);
  return bytes;
}

unsigned predicted(unsigned filter, int a, int b, int c) {
  const int p = a + b - c;
  const bool isA = std::abs(p - a) <= std::abs(p - b) && std::abs(p - a) <= std::abs(p - c);
  const bool isB = std::abs(p - b) <= std::abs(p - c);
  const int values[] = {0, a, b, (a + b) / 2, isA ? a : isB ? b : c};
  return static_cast<unsigned>(values[filter]);
}

// Removes the predictor "PNG" (PDF 1.7, 7.4.4.4). @return false for a filter that there is not
bool removePredictor(std::string& bytes, std::size_t rowSize, std::size_t pixelSize) {
  std::string plain;
  std::string above(rowSize, '\0');
  for (std::size_t begin = 0; begin < bytes.size(); begin += 1 + rowSize) {
    const auto filter = static_cast<unsigned char>(bytes[begin]);
    if (filter > 4) {
      return false;
    }
    std::string row = bytes.substr(begin + 1, rowSize);
    for (std::size_t i = 0; i < rowSize; ++i) {
      const auto at = [i, pixelSize](const std::string& from) {
        return i < pixelSize ? 0 : static_cast<int>(static_cast<unsigned char>(from[i - pixelSize]));
      };
      const unsigned sum = static_cast<unsigned char>(row[i]) +
                           predicted(filter, at(row), static_cast<unsigned char>(above[i]), at(above));
      row[i] = static_cast<char>(static_cast<unsigned char>(sum));
    }
    plain += row;
    above = row;
  }
  bytes = plain;
  return true;
}

std::vector<unsigned> samplesOf(std::string_view bytes, const PdfImage& image, std::size_t rowSize) {
  std::vector<unsigned> samples;
  const std::size_t count = std::size_t{image.width} * static_cast<std::size_t>(image.components);
  const auto depth = static_cast<std::size_t>(image.depth);
  for (std::size_t y = 0; y < image.height; ++y) {
    for (std::size_t i = 0; i < count; ++i) {
      unsigned sample = 0;
      for (std::size_t bit = i * depth; bit < (i + 1) * depth; ++bit) {
        const auto byte = static_cast<unsigned char>(bytes[y * rowSize + bit / 8]);
        sample = sample << 1 | (byte >> (7 - bit % 8) & 1u);
      }
      samples.push_back(sample);
    }
  }
  return samples;
}

bool decode(PdfImage& image, std::string_view keys) {
  const std::size_t bits = static_cast<std::size_t>(image.components * image.depth);
  const std::size_t rowSize = (image.width * bits + 7) / 8;
  const bool isPredicted = has(keys, "/Predictor 15/");
  auto bytes = inflated(image.stream, (rowSize + (isPredicted ? 1 : 0)) * image.height);
  if (!bytes) {
    return false;
  }
  if (isPredicted) {
    const std::string_view parameters = keys.substr(keys.find("/DecodeParms"));
    const bool fits = numberAfter(parameters, "/Columns ") == image.width &&
                      numberAfter(parameters, "/Colors ") == static_cast<std::uint32_t>(image.components) &&
                      numberAfter(parameters, "/BitsPerComponent ") == static_cast<std::uint32_t>(image.depth);
    if (!fits || !removePredictor(*bytes, rowSize, bits < 8 ? 1 : bits / 8)) {
      return false;
    }
  }
  image.samples = samplesOf(*bytes, image, rowSize);
  return true;
}

// Where a dictionary ends before its stream, with its keys and values but for the contents of strings.
struct Dictionary {
  std::size_t size;
  std::string keys;
};

std::optional<Dictionary> dictionaryAt(std::string_view pdf, std::size_t begin) {
  Dictionary dictionary;
  bool isInString = false;
  for (std::size_t at = begin; at < pdf.size(); ++at) {
    if (isInString) {
      isInString = pdf[at] != ')';
      at += pdf[at] == '\\' ? 1 : 0;
      continue;
    }
    if (pdf.substr(at).starts_with(">>stream\n")) {
      dictionary.size = at - begin;
      return dictionary;
    }
    isInString = pdf[at] == '(';
    dictionary.keys += pdf[at];
  }
  return std::nullopt;
}

}  // namespace

std::optional<PdfImage> readPdfImage(std::string_view pdf, int number) {
  const std::string head = "\n" + std::to_string(number) + " 0 obj\n<<";
  const std::size_t begin = pdf.find(head);
  const auto dictionary = begin == pdf.npos ? std::nullopt : dictionaryAt(pdf, begin + head.size());
  if (!dictionary || !has(dictionary->keys, "/Length ")) {
    return std::nullopt;
  }
  constexpr std::size_t kBeforeStream = 9;
  const std::string_view keys = dictionary->keys;
  PdfImage image;
  image.entries = pdf.substr(begin + head.size(), dictionary->size);
  const std::size_t stream = begin + head.size() + dictionary->size + kBeforeStream;
  image.stream = pdf.substr(stream, numberAfter(keys, "/Length "));
  if (!pdf.substr(stream + image.stream.size()).starts_with("\nendstream\nendobj\n")) {
    return std::nullopt;
  }
  image.width = numberAfter(keys, "/Width ");
  image.height = numberAfter(keys, "/Height ");
  image.depth = static_cast<int>(numberAfter(keys, "/BitsPerComponent "));
  image.components = has(keys, "/ColorSpace/DeviceRGB/") ? 3 : has(keys, "/DeviceCMYK/") ? 4 : 1;
  image.mask = static_cast<int>(numberAfter(keys, "/SMask "));
  if (has(keys, "/Filter/FlateDecode") && !decode(image, keys)) {
    return std::nullopt;
  }
  return image;
}

}  // namespace scrivalen::test
