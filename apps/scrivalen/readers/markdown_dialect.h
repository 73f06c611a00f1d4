#pragma once

#include <md4c.h>

namespace scrivalen::command {

/// What the Markdown parser is asked to know: CommonMark with tables, strike-through, task lists and bare addresses.
constexpr unsigned kMarkdownDialect = MD_DIALECT_GITHUB;

}  // namespace scrivalen::command
