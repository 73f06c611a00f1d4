#include "document/plain/office_content.h"
#include "output/compression/crc.h"
#include "support/documents/workbook.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace scrivalen::test {
namespace {

std::string sum(std::string_view name, std::string_view bytes) {
  char text[32];
  std::snprintf(text, sizeof text, " %zu %08x\n", bytes.size(), static_cast<unsigned>(crc32Of(bytes)));
  return std::string(name).append(text);
}

// The sums of a document of every kind of content, with a header, properties, pictures and a table in parts.
std::string sumsOf(const char* format, std::initializer_list<const char*> parts) {
  const TemporaryFolder folder;
  const std::wstring file = folder / L"made";
  const Handle document(scrivalen_new());
  scrivalen_add_file(document.get(), narrowPath(file).c_str(), format);
  for (const auto& [name, value] : {std::pair{"clock", "2026-01-31 23:59:59"},
                                    {"title", "gro\xC3\x9F"},
                                    {"header", "{title}||{section}"},
                                    {"footer", "{date}||{page} of {pages}"},
                                    {"property:of the host", "\xE4\xBD\xA0"}}) {
    EXPECT_EQ(scrivalen_set(document.get(), name, value), SCRIVALEN_OK) << name;
  }
  EXPECT_EQ(writeContent(document.get()), SCRIVALEN_OK);
  EXPECT_EQ(writeMuch(document.get(), 4), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_close(document.get()), SCRIVALEN_OK) << scrivalen_error(document.get());
  std::string sums;
  for (const char* part : parts) {
    sums += sum(part, workbookPart(file, part));
  }
  return sums + sum("all", bytesOf(file));
}

}  // namespace

// The sums of the parts tell where a difference is. That of the whole file is for zlib 1.2.13.
TEST(OfficeBytes, OfAWorkbookAreTheSameOnEverySystem) {
  EXPECT_EQ(sumsOf("xlsx", {"xl/worksheets/sheet1.xml", "xl/worksheets/sheet4.xml", "xl/styles.xml", "xl/workbook.xml",
                            "docProps/core.xml", "docProps/custom.xml", "[Content_Types].xml"}),
            "xl/worksheets/sheet1.xml 2784 d4e27686\n"
            "xl/worksheets/sheet4.xml 15156 0ee5404b\n"
            "xl/styles.xml 4163 191f41e4\n"
            "xl/workbook.xml 1627 31e4a637\n"
            "docProps/core.xml 583 26f65769\n"
            "docProps/custom.xml 362 d15a896e\n"
            "[Content_Types].xml 2386 da95c2fd\n"
            "all 60885 9e26eeb6\n");
}

TEST(OfficeBytes, OfAWordDocumentAreTheSameOnEverySystem) {
  EXPECT_EQ(sumsOf("docx", {"word/document.xml", "word/styles.xml", "word/numbering.xml", "word/header1.xml",
                            "docProps/core.xml", "docProps/custom.xml", "[Content_Types].xml"}),
            "word/document.xml 106161 52aaaa63\n"
            "word/styles.xml 13924 87f50252\n"
            "word/numbering.xml 5829 89ff8c8b\n"
            "word/header1.xml 563 42a91e22\n"
            "docProps/core.xml 521 8630d855\n"
            "docProps/custom.xml 346 7c3a91d1\n"
            "[Content_Types].xml 1914 6365276b\n"
            "all 55334 76eedb5a\n");
}

}  // namespace scrivalen::test
