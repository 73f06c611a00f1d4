#include "formats/pdf/typeset/file/pdf_file.h"

#include "formats/pdf/typeset/file/syntax.h"

namespace scrivalen::typeset {
namespace {

// By trial on a table of a million cells: a higher level takes more time than it saves in size.
constexpr int kLevel = 1;

constexpr std::size_t kObjectsInStream = 128;
constexpr std::size_t kBytesInStream = 32768;

constexpr std::string_view kHeader = "%PDF-1.7\n%\xE2\xE3\xCF\xD3\n";
constexpr std::string_view kHeaderOf14 = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";
constexpr std::string_view kStreamEnd = "\nendstream\nendobj\n";

constexpr std::uint64_t kHashBegin = 14695981039346656037u;  // FNV-1a

std::uint64_t hashOf(std::uint64_t value, std::uint64_t hash) {
  for (int i = 0; i < 8; ++i, value >>= 8) {
    hash = (hash ^ (value & 0xFF)) * 1099511628211u;
  }
  return hash;
}

}  // namespace

PdfFile::PdfFile(OutputBuffer& out, Standard standard)
    : out_(out),
      standard_(standard),
      compressor_(kLevel),
      references_(standard == Standard::A1b ? CrossReferences::Form::Table : CrossReferences::Form::Stream) {}

void PdfFile::begin() {
  const std::string_view header = standard_ == Standard::A1b ? kHeaderOf14 : kHeader;
  out_.write(header.data(), header.size());
}

void PdfFile::writeObject(int number, std::string_view object) {
  if (standard_ == Standard::A1b) {
    beginObject(number);
    scratch_.append(object).append("\nendobj\n");
    out_.write(scratch_.data(), scratch_.size());
    return;
  }
  begin(waiting_, number).append(object);
  end(waiting_);
}

void PdfFile::writeStructureObject(int number, std::string_view object) {
  beginStructureObject(number).append(object);
  endStructureObject();
}

std::string& PdfFile::begin(ObjectStream& stream, int number) {
  if (stream.count == 0) {
    stream.number = newNumber();
  }
  references_.setInStream(number, stream.number, stream.count);
  Operators(stream.places).number(number).add(" ").number(static_cast<int>(stream.objects.size())).add(" ");
  ++stream.count;
  return stream.objects;
}

void PdfFile::end(ObjectStream& stream) {
  stream.objects += '\n';
  if (stream.count == kObjectsInStream || stream.objects.size() >= kBytesInStream) {
    writeWaiting(stream);
  }
}

void PdfFile::writeWaiting(ObjectStream& stream) {
  if (stream.count == 0) {
    return;
  }
  std::string entries = "/Type/ObjStm/N ";
  appendInteger(entries, static_cast<std::int64_t>(stream.count));
  entries += "/First ";
  appendInteger(entries, static_cast<std::int64_t>(stream.places.size()));
  stream.count = 0;
  stream.places.append(stream.objects);
  writeStream(stream.number, entries, stream.places);
  stream.places.clear();
  stream.objects.clear();
}

void PdfFile::beginObject(int number) {
  references_.setOffset(number, out_.position());
  scratch_.clear();
  appendInteger(scratch_, number);
  scratch_ += " 0 obj\n";
}

void PdfFile::writeStream(int number, std::string_view entries, std::string_view data) {
  compressed_.clear();
  compressor_.compress(data, compressed_);
  std::string all(entries);
  all += "/Filter/FlateDecode";
  writeEncodedStream(number, all, compressed_);
}

void PdfFile::writeEncodedStream(int number, std::string_view entries, std::string_view data) {
  beginObject(number);
  scratch_.append("<<").append(entries).append("/Length ");
  appendInteger(scratch_, static_cast<std::int64_t>(data.size()));
  scratch_ += ">>stream\n";
  out_.write(scratch_.data(), scratch_.size());
  out_.write(data.data(), data.size());
  out_.write(kStreamEnd.data(), kStreamEnd.size());
}

void PdfFile::finish(const FileRoots& roots) {
  if (standard_ == Standard::A1b) {
    return writeCrossReferenceTable(roots);
  }
  writeWaiting(waitingStructure_);
  writeWaiting(waiting_);
  writeCrossReferences(roots);
}

// What ends a file of each kind. Files for archives have an identifier (PDF 1.7, 14.4), here from the places of all
// objects, so that equal files have the same.
std::string PdfFile::trailerEntries(const FileRoots& roots) {
  const std::uint64_t hash = references_.finish(hashOf(roots.identity, kHashBegin));
  std::string entries = "/Size ";
  appendInteger(entries, references_.count());
  entries += "/Root ";
  appendReference(entries, roots.catalog);
  entries += "/Info ";
  appendReference(entries, roots.information);
  if (standard_ != Standard::None) {
    std::string identifier;
    for (const std::uint64_t half : {hash, hashOf(hash, kHashBegin)}) {
      appendHex(identifier, half, 16);
    }
    entries.append("/ID[<").append(identifier).append("><").append(identifier).append(">]");
  }
  return entries;
}

// PDF 1.4, 3.4.3.
void PdfFile::writeCrossReferenceTable(const FileRoots& roots) {
  const std::uint64_t begin = out_.position();
  std::string part = "xref\n0 ";
  appendInteger(part, references_.count());
  part += '\n';
  out_.write(part.data(), part.size());
  references_.writeTable(out_);
  part = "trailer\n<<";
  part.append(trailerEntries(roots)).append(">>\n");
  out_.write(part.data(), part.size());
  writeStart(begin);
}

void PdfFile::writeCrossReferences(const FileRoots& roots) {
  const std::uint64_t begin = out_.position();
  const int number = newNumber();
  beginObject(number);
  const std::string entries = trailerEntries(roots);
  scratch_.append("<</Filter/FlateDecode/Type/XRef").append(CrossReferences::streamEntries()).append(entries);
  scratch_ += "/Length ";
  appendInteger(scratch_, static_cast<std::int64_t>(references_.streamSize()));
  scratch_ += ">>stream\n";
  out_.write(scratch_.data(), scratch_.size());
  references_.writeStream(out_);
  out_.write(kStreamEnd.data(), kStreamEnd.size());
  writeStart(begin);
}

void PdfFile::writeStart(std::uint64_t crossReferences) {
  std::string end = "startxref\n";
  appendInteger(end, static_cast<std::int64_t>(crossReferences));
  end += "\n%%EOF\n";
  out_.write(end.data(), end.size());
}

}  // namespace scrivalen::typeset
