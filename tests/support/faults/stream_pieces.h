#pragma once

#include <cstddef>
#include <set>

namespace scrivalen::test {

/// Notes where each piece of a stream's output ends. A stream that is full fails with the piece that has no room, so
/// the bytes at the edges of all pieces stand for every byte.
struct StreamPieces {
  static int write(void* user, const void*, std::size_t size) {
    StreamPieces& self = *static_cast<StreamPieces*>(user);
    self.size += size;
    self.ends.insert(self.size);
    return 0;
  }

  std::size_t size = 0;
  std::set<std::size_t> ends;
};

}  // namespace scrivalen::test
