#include "output/compression/deflate.h"

#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>

namespace scrivalen {
namespace {

constexpr std::size_t kMost = std::numeric_limits<uInt>::max();
constexpr std::size_t kStep = 65536;
constexpr std::size_t kPartStep = 16384;  // of a text in parts

// zlib takes its input as not const, but does not change it.
Bytef* inputOf(std::string_view bytes) { return reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data())); }

int windowOf(DeflateFormat format) { return format == DeflateFormat::Raw ? -MAX_WBITS : MAX_WBITS; }

}  // namespace

struct Deflater::State {
  z_stream stream{};
  std::unique_ptr<char[]> output;  // what the stream's pointer is past
};

Deflater::Deflater(int level, DeflateFormat format, int memory) : state_(std::make_unique<State>()) {
  if (deflateInit2(&state_->stream, level, Z_DEFLATED, windowOf(format), memory, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
}

Deflater::~Deflater() { deflateEnd(&state_->stream); }

void Deflater::begin() {
  if (!state_->output) {
    state_->output = std::make_unique<char[]>(kPartStep);
  }
  z_stream& stream = state_->stream;
  deflateReset(&stream);
  stream.next_out = reinterpret_cast<Bytef*>(state_->output.get());
  stream.avail_out = static_cast<uInt>(kPartStep);
}

void Deflater::add(std::string_view part, std::string& out) {
  while (part.size() > kMost) {
    run(part.substr(0, kMost), false, out);
    part.remove_prefix(kMost);
  }
  run(part, false, out);
}

void Deflater::end(std::string& out) {
  run({}, true, out);
  out.append(state_->output.get(), kPartStep - state_->stream.avail_out);
}

void Deflater::run(std::string_view part, bool isLast, std::string& out) {
  z_stream& stream = state_->stream;
  stream.next_in = inputOf(part);
  stream.avail_in = static_cast<uInt>(part.size());
  while (deflate(&stream, isLast ? Z_FINISH : Z_NO_FLUSH) != Z_STREAM_END && stream.avail_out == 0) {
    out.append(state_->output.get(), kPartStep);
    stream.next_out = reinterpret_cast<Bytef*>(state_->output.get());
    stream.avail_out = static_cast<uInt>(kPartStep);
  }
}

struct Inflater::State {
  z_stream stream{};
  std::string_view compressed;
  std::size_t given = 0;  // of the compressed bytes, to zlib
  int result = Z_OK;
};

Inflater::Inflater(std::string_view compressed, DeflateFormat format) : state_(std::make_unique<State>()) {
  state_->compressed = compressed;
  if (inflateInit2(&state_->stream, windowOf(format)) != Z_OK) {
    throw std::bad_alloc();
  }
}

Inflater::~Inflater() { inflateEnd(&state_->stream); }

std::size_t Inflater::read(char* out, std::size_t size) {
  z_stream& stream = state_->stream;
  std::size_t written = 0;
  while (written < size && state_->result == Z_OK) {
    if (stream.avail_in == 0) {
      const std::string_view part = state_->compressed.substr(state_->given, kMost);
      state_->given += part.size();
      stream.next_in = inputOf(part);
      stream.avail_in = static_cast<uInt>(part.size());
    }
    const std::size_t space = std::min(size - written, kMost);
    stream.next_out = reinterpret_cast<Bytef*>(out + written);
    stream.avail_out = static_cast<uInt>(space);
    // Without any more input zlib returns Z_BUF_ERROR.
    state_->result = inflate(&stream, Z_NO_FLUSH);
    written += space - stream.avail_out;
  }
  if (state_->result == Z_MEM_ERROR) {
    throw std::bad_alloc();
  }
  return written;
}

bool Inflater::isAtEnd() const { return state_->result == Z_STREAM_END; }

std::size_t Inflater::used() const { return state_->given - state_->stream.avail_in; }

}  // namespace scrivalen
