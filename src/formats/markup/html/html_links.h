#pragma once

#include <string>
#include <string_view>

// Ids and addresses as HTML allows them, before they are escaped.
namespace scrivalen::document {

/// An id without white space (HTML, 3.2.6): a blank becomes "~20". Different ids stay different.
std::string htmlId(std::string_view id);

/// The address of a place in the same page.
std::string htmlPlace(std::string_view id);

/// A valid URL (WHATWG URL, 4.3): what it may not contain is percent-encoded; blanks around it and line ends inside it
/// are dropped, as browsers do. "#id" leads to the place with that id.
std::string htmlAddress(std::string_view address);

}  // namespace scrivalen::document
