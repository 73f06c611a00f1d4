#pragma once

#include "document/document.h"
#include "scrivalen/document.h"

#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

/// What the C interface hands out.
struct scrivalen_document {
  scrivalen::document::Document document;
};

// What the functions of the C interface share.
namespace scrivalen::api {

using document::Document;
using document::Status;

/// Turns the exception that is being handled into a result.
Status failed(Document& document) noexcept;

/// Runs a call of the host, with no exception leaving it. Refuses one without a document, or from a callback of it.
template <typename Action>
scrivalen_status call(scrivalen_document* handle, Action action) noexcept {
  if (!handle || handle->document.isInCallback()) {
    return SCRIVALEN_MISUSE;
  }
  try {
    return static_cast<scrivalen_status>(action(handle->document));
  } catch (...) {
    return static_cast<scrivalen_status>(failed(handle->document));
  }
}

/// SCRIVALEN_NUL, whose cast is C's.
inline constexpr std::size_t kToNul = static_cast<std::size_t>(-1);

/// A name, an id, an address or a path; null is empty.
inline std::string_view textOf(const char* text) { return text ? std::string_view(text) : std::string_view(); }
/// A text with its length.
inline std::string_view textOf(const char* text, std::size_t size) {
  return !text || size == kToNul ? textOf(text) : std::string_view(text, size);
}

/// A host's text as a sentence about it shows it: 'text', in well-formed UTF-8.
std::string quoted(std::string_view text);

/// The size of a struct is its stride in an array, so a size that is none would lead anywhere.
inline constexpr std::size_t kLargestStruct = 4096;

/// Reads the first element of an array of structs, or a single struct. @return false when its size is out of range
template <typename Struct>
bool readStruct(const void* given, Struct& result) {
  std::size_t size = 0;
  std::memcpy(&size, given, sizeof size);
  if (size < sizeof result || size > kLargestStruct) {
    return false;
  }
  std::memcpy(&result, given, sizeof result);
  return true;
}

/// Reads one of an array of structs, whose stride is the size of the first. @return false when its size is another
template <typename Struct>
bool readStruct(const Struct* first, std::size_t index, Struct& result) {
  const std::size_t stride = first->size;
  const char* const given = reinterpret_cast<const char*>(first) + index * stride;
  return readStruct(given, result) && result.size == stride;
}

/// The enumeration's value if a host's number is between 0 and the last one.
template <typename Enum>
std::optional<Enum> enumOf(int value, Enum last) {
  return value >= 0 && value <= static_cast<int>(last) ? std::optional(static_cast<Enum>(value)) : std::nullopt;
}

inline constexpr std::string_view kWrongSize = "the size of a struct is not set, or is out of range";

}  // namespace scrivalen::api
