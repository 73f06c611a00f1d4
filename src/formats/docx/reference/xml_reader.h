#pragma once

#include "formats/docx/reference/xml_element.h"

#include <cstddef>
#include <stdexcept>
#include <string_view>

namespace scrivalen::document::docx {

/// Why a text cannot be read: the end of a sentence, such as "is not well-formed XML".
class XmlError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

inline constexpr std::size_t kMostXmlElements = 200'000;
inline constexpr std::size_t kDeepestXml = 64;  ///< elements in each other

/// Reads a part of an office document: XML 1.0 with namespaces, in UTF-8, UTF-16 or another encoding that Expat knows,
/// without a document type. Raises XmlError for anything else, and beyond the limits above.
/// @param text  of less than 2 GiB
///
/// Only elements and attributes that the library knows are kept. Names in the namespace of text documents begin with
/// "w:" in the result, those of drawings with "a:", those of relations have no prefix. Attributes are in the namespace
/// of text documents on its elements, and in none on others. All else is left out, and so are texts.
/// @return the root, whose name is "?" if it is in another namespace
XmlElement readXml(std::string_view text);

}  // namespace scrivalen::document::docx
