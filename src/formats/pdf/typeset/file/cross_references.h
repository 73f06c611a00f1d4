#pragma once

#include "output/compression/deflated_pieces.h"
#include "output/output_buffer.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {

/// Gives objects their numbers and keeps where they are in the file, for its end. The rows of a cross-reference stream
/// (PDF 1.7, 7.5.8) are compressed as soon as a block of objects is written, to a few bits each, so that a file may
/// have millions of objects. A table (7.5.4) takes 8 bytes an object.
class CrossReferences {
 public:
  enum class Form { Stream, Table };

  explicit CrossReferences(Form form) : form_(form) { newNumber(); }

  int newNumber();
  /// The number of entries, with that of the free object 0.
  std::int64_t count() const { return count_; }
  void setOffset(int number, std::uint64_t offset);
  /// @param stream  the number of the object stream
  /// @param index   of the object there, below 256
  void setInStream(int number, int stream, std::size_t index);
  /// Ends the entries. @return a hash of all places
  std::uint64_t finish(std::uint64_t hash);

  /// The entries of a stream's dictionary that say how its rows are written.
  static std::string_view streamEntries() { return "/W[1 5 1]/DecodeParms<</Predictor 12/Columns 7>>"; }
  /// The size of the compressed rows.
  std::uint64_t streamSize() const;
  void writeStream(OutputBuffer& out) const;
  void writeTable(OutputBuffer& out) const;

 private:
  // Of 4,096 objects. A place is a row of the cross-reference stream as a number: a kind, then five bytes for the
  // offset or the number of an object stream, then the index there. 0 is an object that was never written.
  struct Block {
    std::vector<std::uint64_t> places;  // none once they are compressed
    std::size_t missing = 0;
    std::uint64_t last = 0;
    DeflatedPiece rows;
    bool isCompressed = false;
  };

  static constexpr std::size_t kBlock = 4096;

  void set(int number, std::uint64_t place);
  void compressIfReady(std::size_t block);
  void compress(std::size_t block);

  const Form form_;
  std::vector<Block> blocks_;
  std::int64_t count_ = 0;
  std::optional<PieceDeflater> deflater_;
  std::string scratch_;
};

}  // namespace scrivalen::typeset
