#pragma once

#include "formats/pdf/typeset/file/standard.h"
#include "output/compression/compressor.h"
#include "output/output_buffer.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// The objects that the end of a file names.
struct FileRoots {
  int catalog;
  int information;
  std::uint64_t identity = 0;  ///< of what the document says about itself, for the identifier of an archive's file
};

/// Writes the objects of a PDF 1.7 file in one pass. Objects without a stream wait until enough of them fill an object
/// stream (7.5.7). A file for the standard PDF/A-1b is PDF 1.4, which has no such streams. What is kept of an object is
/// 8 bytes: where it is.
class PdfFile {
 public:
  /// @param out  not owned; must outlive this object
  explicit PdfFile(OutputBuffer& out, Standard standard = Standard::None);

  Standard standard() const { return standard_; }
  void begin();

  /// Reserves the number of an object that is written later.
  int newNumber();
  void writeObject(int number, std::string_view object);
  /// Writes an object of the document's structure. These have object streams of their own: a reader that opens a page
  /// would else have to read the structure around it.
  void writeStructureObject(int number, std::string_view object);
  /// Writes a stream and compresses it.
  /// @param entries  of its dictionary, other than its length and filter
  void writeStream(int number, std::string_view entries, std::string_view data);
  /// Writes a stream that is compressed already, or that should not be; its entries name its filter.
  void writeEncodedStream(int number, std::string_view entries, std::string_view data);
  /// Writes what readers begin with.
  void finish(const FileRoots& roots);

  std::uint64_t size() const { return out_.position(); }

 private:
  void beginObject(int number);
  void setPlace(int number, std::uint64_t place);
  struct ObjectStream {
    std::string objects;
    std::string places;  // pairs of number and offset
    std::size_t count = 0;
    int number = 0;
  };

  void addTo(ObjectStream& stream, int number, std::string_view object);
  void writeWaiting(ObjectStream& stream);
  void writeCrossReferences(const FileRoots& roots);
  void writeCrossReferenceTable(const FileRoots& roots);
  std::string trailerEntries(const FileRoots& roots) const;

  OutputBuffer& out_;
  const Standard standard_;
  Compressor compressor_;
  std::deque<std::uint64_t> places_;  // of each object from 1 on: see place() in pdf_file.cpp
  ObjectStream waiting_;              // the objects of the next object stream
  ObjectStream waitingStructure_;
  std::string compressed_;
  std::string scratch_;
};

}  // namespace scrivalen::typeset
