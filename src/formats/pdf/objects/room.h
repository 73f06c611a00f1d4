#pragma once

#include <algorithm>
#include <cstddef>

namespace scrivalen::platform {

/// Makes room for more elements, so that appending them cannot fail. A vector grows by it as it grows by appending.
template <typename Vector>
void makeRoom(Vector& vector, std::size_t more) {
  if (vector.capacity() - vector.size() < more) {
    vector.reserve(std::max(2 * vector.capacity(), vector.size() + more));
  }
}

}  // namespace scrivalen::platform
