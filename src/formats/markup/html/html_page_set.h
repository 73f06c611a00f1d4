#pragma once

#include "document/pictures/picture.h"

#include <string>
#include <string_view>

namespace scrivalen::document {

/// Pages that make up one document, such as the topics of a help file: where their places and their pictures are.
class HtmlPageSet {
 public:
  virtual ~HtmlPageSet() = default;

  /// The page that is being written has a place.
  virtual void addPlace(std::string_view id) = 0;
  /// The address of a place, which may be on a page that comes later.
  virtual std::string addressOf(std::string_view id) = 0;
  /// The address of a picture.
  virtual std::string addressOf(const Picture& picture) = 0;
  /// Markup of the host's as the page gets it.
  virtual std::string markupOf(std::string_view markup) = 0;
};

}  // namespace scrivalen::document
