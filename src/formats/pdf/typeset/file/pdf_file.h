#pragma once

#include "formats/pdf/typeset/file/cross_references.h"
#include "formats/pdf/typeset/file/standard.h"
#include "output/compression/compressor.h"
#include "output/output_buffer.h"

#include <cstddef>
#include <cstdint>
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
/// stream (7.5.7). A file for the standard PDF/A-1b is PDF 1.4, which has no such streams.
class PdfFile {
 public:
  /// @param out  not owned; must outlive this object
  explicit PdfFile(OutputBuffer& out, Standard standard = Standard::None);

  Standard standard() const { return standard_; }
  void begin();

  /// Reserves the number of an object that is written later.
  int newNumber() { return references_.newNumber(); }
  void writeObject(int number, std::string_view object);
  /// Writes an object of the document's structure. These have object streams of their own: a reader that opens a page
  /// would else have to read the structure around it.
  void writeStructureObject(int number, std::string_view object);
  /// The same for an object that is appended to the string returned, until endStructureObject().
  std::string& beginStructureObject(int number) { return begin(waitingStructure_, number); }
  void endStructureObject() { end(waitingStructure_); }
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
  struct ObjectStream {
    std::string objects;
    std::string places;  // pairs of number and offset
    std::size_t count = 0;
    int number = 0;
  };

  std::string& begin(ObjectStream& stream, int number);
  void end(ObjectStream& stream);
  void writeWaiting(ObjectStream& stream);
  void writeCrossReferences(const FileRoots& roots);
  void writeCrossReferenceTable(const FileRoots& roots);
  void writeStart(std::uint64_t crossReferences);
  std::string trailerEntries(const FileRoots& roots);

  OutputBuffer& out_;
  const Standard standard_;
  Compressor compressor_;
  CrossReferences references_;
  ObjectStream waiting_;  // the objects of the next object stream
  ObjectStream waitingStructure_;
  std::string compressed_;
  std::string scratch_;
};

}  // namespace scrivalen::typeset
