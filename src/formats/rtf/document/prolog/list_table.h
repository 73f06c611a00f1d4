#pragma once

#include "output/output_buffer.h"

#include <string_view>

namespace scrivalen::document::rtf {

// Lists: one of bullets for all of them, and numbered ones that start at 1. Each of those is used once, since the next
// use would continue it.
inline constexpr int kBulletList = 1;
inline constexpr int kFirstNumberedList = 2;
inline constexpr int kNumberedLists = 60;
inline constexpr int kBulletLevels = 9;
/// The character before an item, by the list's depth.
std::string_view bulletOf(int level);

/// Writes the table of all lists.
void writeLists(OutputBuffer& out);

}  // namespace scrivalen::document::rtf
