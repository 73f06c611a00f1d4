#include "output/compression/compressor.h"

#include <libdeflate.h>

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <new>

namespace scrivalen {
namespace {

libdeflate_compressor* compressorOf(void* state) { return static_cast<libdeflate_compressor*>(state); }

// With its first checksum libdeflate stores, without a lock, which code suits the processor. Here one thread has it do
// so before any other compresses.
libdeflate_compressor* allocated(int level) {
  [[maybe_unused]] static const std::uint32_t first = libdeflate_adler32(1, "", 0);
  return libdeflate_alloc_compressor(level);
}

}  // namespace

void Compressor::Release::operator()(void* state) const { libdeflate_free_compressor(compressorOf(state)); }

Compressor::Compressor(int level) : state_(allocated(level)) {
  if (!state_) {
    throw std::bad_alloc();
  }
}

Compressor::~Compressor() = default;

void Compressor::compress(std::string_view text, std::string& out) {
  libdeflate_compressor* const compressor = compressorOf(state_.get());
  const std::size_t begin = out.size();
  const std::size_t space = libdeflate_zlib_compress_bound(compressor, text.size());
  out.resize(begin + space);
  const std::size_t written = libdeflate_zlib_compress(compressor, text.data(), text.size(), out.data() + begin, space);
  assert(written != 0);  // the bound is enough for any text
  out.resize(begin + written);
}

}  // namespace scrivalen
