#include "document/pictures/drawing_turn.h"

#include <algorithm>

namespace scrivalen::document {

std::string_view drawingTurn(int orientation) {
  constexpr std::string_view kTurns[] = {"",
                                         " flipH=\"1\"",
                                         " rot=\"10800000\"",
                                         " flipV=\"1\"",
                                         " rot=\"5400000\" flipV=\"1\"",
                                         " rot=\"5400000\"",
                                         " rot=\"16200000\" flipV=\"1\"",
                                         " rot=\"16200000\""};
  return kTurns[std::clamp(orientation, 1, 8) - 1];
}

}  // namespace scrivalen::document
