#include "output/compression/deflate.h"

#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>

namespace scrivalen {

struct Deflater::State {
  z_stream stream{};
};

Deflater::Deflater(int level) : state_(std::make_unique<State>()) {
  if (deflateInit(&state_->stream, level) != Z_OK) {
    throw std::bad_alloc();
  }
}

Deflater::~Deflater() { deflateEnd(&state_->stream); }

void Deflater::compress(std::string_view text, std::string& out) {
  constexpr std::size_t kMost = std::numeric_limits<uInt>::max();
  constexpr std::size_t kStep = 65536;
  z_stream& stream = state_->stream;
  deflateReset(&stream);
  const std::size_t begin = out.size();
  std::size_t written = 0;
  int result = Z_OK;
  while (result != Z_STREAM_END) {
    const std::size_t part = std::min(text.size(), kMost);
    // zlib takes its input as not const, but does not change it.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(part);
    out.resize(begin + written + std::max<std::size_t>(kStep, part / 4));
    stream.next_out = reinterpret_cast<Bytef*>(out.data() + begin + written);
    const std::size_t space = std::min(out.size() - begin - written, kMost);
    stream.avail_out = static_cast<uInt>(space);
    result = deflate(&stream, part == text.size() ? Z_FINISH : Z_NO_FLUSH);
    text.remove_prefix(part - stream.avail_in);
    written += space - stream.avail_out;
  }
  out.resize(begin + written);
}

}  // namespace scrivalen
