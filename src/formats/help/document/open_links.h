#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

// Links to places that are not known yet. In a page each has its number between two marks, characters that neither a
// text nor a page contains.
namespace scrivalen::help {

/// What a page has in the place of an address.
std::string openLink(std::size_t number);

/// Removes what would be taken for a mark.
std::string withoutMarks(std::string_view markup);

/// Puts the addresses in the places of the numbers.
class OpenLinks {
 public:
  /// @param addressOf  returns the address for a number, in the encoding of the page
  explicit OpenLinks(std::function<std::string(std::size_t)> addressOf) : addressOf_(std::move(addressOf)) {}

  /// The next piece of a page with its links complete; valid until the next call.
  std::string_view completed(std::string_view piece);

 private:
  void takeNumber(std::string_view& piece);

  std::function<std::string(std::size_t)> addressOf_;
  std::string completed_;
  std::string digits_;
  bool isInLink_ = false;
};

/// A link in markup that leads to a place in the document.
struct LinkInside {
  std::size_t begin;  ///< of the address
  std::size_t end;
  std::string id;
};

/// The first of such links; nothing without one.
std::optional<LinkInside> nextLinkInside(std::string_view markup);

}  // namespace scrivalen::help
