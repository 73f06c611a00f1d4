#include "readers/markdown/entities.h"

#include "readers/markdown/entity_table.h"
#include "text/utf.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>

namespace scrivalen::command {
namespace {

void appendCharacter(std::string& text, char32_t c) {
  char bytes[4];
  text.append(bytes, scrivalen::putUtf8(c, bytes));
}

// CommonMark 0.30, 6.2: an invalid character becomes U+FFFD.
std::optional<char32_t> numericReference(std::string_view digits) {
  const bool hexadecimal = digits.starts_with('x') || digits.starts_with('X');
  digits.remove_prefix(hexadecimal ? 1 : 0);
  std::uint32_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto result = std::from_chars(digits.data(), end, number, hexadecimal ? 16 : 10);
  if (result.ec == std::errc::result_out_of_range) {
    return scrivalen::kReplacement;
  }
  if (result.ptr != end || digits.empty()) {
    return std::nullopt;
  }
  const auto c = static_cast<char32_t>(number);
  return c != 0 && scrivalen::isCharacter(c) ? c : scrivalen::kReplacement;
}

const Entity* namedEntity(std::string_view name) {
  const auto* const found = std::lower_bound(
      std::begin(kEntities), std::end(kEntities), name,
      [](const Entity& entity, std::string_view wanted) { return std::string_view(entity.name) < wanted; });
  return found != std::end(kEntities) && found->name == name ? found : nullptr;
}

}  // namespace

void appendEntity(std::string& text, std::string_view reference) {
  const std::string_view name = reference.substr(1, reference.size() - 2);
  if (name.starts_with('#')) {
    if (const auto c = numericReference(name.substr(1))) {
      appendCharacter(text, *c);
      return;
    }
  } else if (const Entity* entity = namedEntity(name)) {
    appendCharacter(text, entity->first);
    if (entity->second != 0) {
      appendCharacter(text, entity->second);
    }
    return;
  }
  text += reference;
}

}  // namespace scrivalen::command
