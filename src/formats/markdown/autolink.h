#pragma once

#include <string_view>

namespace scrivalen::markdown {

/// Whether a link may be written as its text in angle brackets: it shows its own address (CommonMark 0.30, 6.5), which
/// has nothing that a reader could take for markup.
bool isAutolink(std::string_view text, std::string_view address);

/// Whether text to come may make this the beginning of such a link's text.
bool mayBecomeAutolink(std::string_view text, std::string_view address);

}  // namespace scrivalen::markdown
