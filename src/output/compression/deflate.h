#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace scrivalen {

/// What surrounds compressed bytes.
enum class DeflateFormat {
  Zlib,  ///< a header and a checksum (RFC 1950)
  Raw    ///< nothing (RFC 1951), as in archives
};

/// Compresses texts that come in parts. The level is fixed, so that the same text in the same parts gives the same
/// bytes with the same zlib.
class Deflater {
 public:
  static constexpr int kUsualMemory = 8;

  /// @param level   1 (fast) to 9 (small)
  /// @param memory  1 to 9, zlib's memLevel. With less the tables are smaller that zlib goes through after every 32 KiB
  explicit Deflater(int level, DeflateFormat format = DeflateFormat::Zlib, int memory = kUsualMemory);
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;
  ~Deflater();

  /// Begins a text.
  void begin();
  /// Appends what is ready of the compressed text to @p out. Each call costs time, so parts should be of some
  /// kilobytes.
  void add(std::string_view part, std::string& out);
  /// Appends what is left.
  void end(std::string& out);

 private:
  struct State;

  void run(std::string_view part, bool isLast, std::string& out);

  std::unique_ptr<State> state_;
};

/// Decompresses one text.
class Inflater {
 public:
  /// @param compressed  not owned; bytes after the end of the text are ignored
  explicit Inflater(std::string_view compressed, DeflateFormat format = DeflateFormat::Zlib);
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;
  ~Inflater();

  /// Stores the next bytes of the text.
  /// @return their number: fewer than @p size only at the end of the text or where it is broken or cut off
  std::size_t read(char* out, std::size_t size);
  /// Whether the text was read to its end, and its checksum, if the format has one, is right.
  bool isAtEnd() const;
  /// How many compressed bytes have been used.
  std::size_t used() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace scrivalen
