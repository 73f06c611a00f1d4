#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace scrivalen {

/// Compresses texts, each on its own, in the zlib format (RFC 1950). The level is fixed, so that the same text gives
/// the same bytes with the same zlib.
class Deflater {
 public:
  /// @param level  1 (fast) to 9 (small)
  explicit Deflater(int level);
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;
  ~Deflater();

  /// Appends the compressed text to @p out.
  void compress(std::string_view text, std::string& out);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace scrivalen
