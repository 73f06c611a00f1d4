#include "same_bytes.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>

namespace scrivalen::bench {
namespace {

std::optional<std::string> contentOf(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  if (!in || bytes.empty()) {
    return std::nullopt;
  }
  return bytes;
}

}  // namespace

std::string difference(const std::string& file, const std::string& other) {
  const auto bytes = contentOf(file);
  const auto otherBytes = contentOf(other);
  if (!bytes || !otherBytes) {
    return "cannot read " + (bytes ? other : file) + ", or it is empty";
  }
  if (*bytes == *otherBytes) {
    return {};
  }
  const auto at = std::mismatch(bytes->begin(), bytes->end(), otherBytes->begin(), otherBytes->end()).first;
  return file + " and " + other + " differ from byte " + std::to_string(at - bytes->begin()) + " on";
}

}  // namespace scrivalen::bench
