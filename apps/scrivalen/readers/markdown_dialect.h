#pragma once

#include <md4c.h>

namespace scrivalen::command {

/// CommonMark with tables, strike-through, task lists and bare addresses as links.
constexpr unsigned kMarkdownDialect = MD_DIALECT_GITHUB;

}  // namespace scrivalen::command
