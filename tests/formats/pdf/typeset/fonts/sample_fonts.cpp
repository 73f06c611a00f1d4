#include "formats/pdf/typeset/fonts/sample_fonts.h"

#include "output/host_handlers.h"
#include "support/files.h"
#include "system/files/files.h"
#include "text/utf.h"

#include <gtest/gtest.h>

#include <utility>

namespace scrivalen::test {
namespace {

constexpr std::size_t kHeaderSize = 12;
constexpr std::size_t kRecordSize = 16;

std::size_t numberAt(std::string_view bytes, std::size_t at, std::size_t size) {
  std::size_t number = 0;
  for (std::size_t i = 0; i < size; ++i) {
    number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
  }
  return number;
}

void setNumber(std::string& bytes, std::size_t at, std::size_t size, std::size_t number) {
  while (size > 0) {
    bytes[at + --size] = static_cast<char>(static_cast<unsigned char>(number & 0xFF));
    number >>= 8;
  }
}

// Where the record of a table is; 0 if there is none.
std::size_t recordOf(std::string_view font, std::string_view tag) {
  for (std::size_t i = 0; i < numberAt(font, 4, 2); ++i) {
    const std::size_t record = kHeaderSize + i * kRecordSize;
    if (font.substr(record, tag.size()) == tag) {
      return record;
    }
  }
  ADD_FAILURE() << "no table " << tag;
  return 0;
}

}  // namespace

std::string bundledFont(std::string_view name) {
  std::wstring path(folderOf(homePath()));
  path.append(L"fonts").append(1, kPathSeparator).append(toWide(name));
  return bytesOf(path);
}

std::string postScriptFont() { return bytesOf(toWide(SCRIVALEN_POSTSCRIPT_FONT)); }

std::string devanagariFont() { return bytesOf(toWide(SCRIVALEN_DEVANAGARI_FONT)); }

TablePlace tableOf(std::string_view font, std::string_view tag) {
  const std::size_t record = recordOf(font, tag);
  return {numberAt(font, record + 8, 4), numberAt(font, record + 12, 4)};
}

std::string withEmbedding(std::string font, unsigned fsType) {
  setNumber(font, tableOf(font, "OS/2").at + 8, 2, fsType);
  return font;
}

std::string withoutTable(std::string font, std::string_view tag) {
  font[recordOf(font, tag)] = '?';
  return font;
}

std::string collectionOf(const std::vector<std::string>& fonts) {
  std::string collection("ttcf\0\1\0\0", 8);
  collection.resize(kHeaderSize + 4 * fonts.size());
  setNumber(collection, 8, 4, fonts.size());
  for (std::size_t i = 0; i < fonts.size(); ++i) {
    const std::size_t begin = collection.size();
    setNumber(collection, kHeaderSize + 4 * i, 4, begin);
    collection += fonts[i];
    for (std::size_t table = 0; table < numberAt(fonts[i], 4, 2); ++table) {
      const std::size_t offset = begin + kHeaderSize + table * kRecordSize + 8;
      setNumber(collection, offset, 4, numberAt(collection, offset, 4) + begin);
    }
  }
  return collection;
}

std::unique_ptr<typeset::FontFile> readFont(std::string data, unsigned index) {
  std::string reason;
  auto font = typeset::FontFile::read(std::move(data), index, reason);
  EXPECT_TRUE(font) << reason;
  return font;
}

}  // namespace scrivalen::test
