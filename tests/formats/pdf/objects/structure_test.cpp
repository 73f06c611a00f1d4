#include "formats/pdf/objects/sample.h"
#include "support/captured_log.h"
#include "support/documents/pdf_structure.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace PDFStuffer;
using namespace scrivalen::test;

namespace {

using Problems = std::vector<std::string>;

std::string sample(Form form) {
  const FixedClock clock(0);
  FileOnDisk file(form);
  fillSample(file.pdf);
  return file.saved();
}

// Replaces the first occurrence of some words by others of the same length.
std::string replaced(std::string bytes, const std::string& words, const std::string& others) {
  const std::size_t at = bytes.find(words);
  EXPECT_NE(at, bytes.npos) << words;
  EXPECT_EQ(words.size(), others.size()) << words;
  return at == bytes.npos ? bytes : bytes.replace(at, words.size(), others);
}

struct Damage {
  const char* words;
  const char* others;
  const char* problem;
};

void PrintTo(const Damage& damage, std::ostream* out) { *out << damage.problem; }

struct PdfStructureOfADamagedFile : testing::TestWithParam<Damage> {};

const Damage kDamages[] = {
    {"%PDF-1.4", "%PDF-1.5", "the first two lines"},
    {"%%EOF", "%%EOO", "the end of the file"},
    {"%%EOF", "%%EOO", "the trailer"},
    {"/Size 13", "/Size 12", "the trailer"},
    {"xref\r\n0 13", "xref\r\n0 14", "line 13 of the table"},
    {"xref\r\n0 13", "xref\r\n0 12", "the objects do not reach to the table"},
    {"0000000000 65535 f", "0000000000 65534 f", "the head of the table"},
    {" 00000 n", " 00001 n", "line 1 of the table"},
    {" 00000 n", " 00000 f", "line 1 of the table"},
    {"0000000015 ", "0000000016 ", "the offset of object 1"},
    {"0000000015 ", "0000000016 ", "object 1 does not begin where the one in front of it ends"},
    {"6 0 obj", "7 0 obj", "the offset of object 6"},
    {"6 0 obj", "7 0 obj", "object 2 refers to 6, which is not there"},
    {"/Pages 2 0 R", "/Pages 3 0 R", "the catalog"},
    {"/Outlines 9 0 R", "/Outlines 8 0 R", "the outline"},
    {"/Count 2\r\n/Kids", "/Count 3\r\n/Kids", "the number of pages"},
    {"[4 0 R 6 0 R ]", "[4 0 R 4 0 R ]", "the page tree does not list each page once"},
    {"/Parent 2 0 R", "/Parent 3 0 R", "the parent of page 4"},
    {"/Contents 5 0 R", "/Contents 3 0 R", "the content of page 4"},
    {"/F1 3 0 R", "/F2 3 0 R", "page 4 does not list font 3"},
    {"/MediaBox", "/mediaBox", "the media box of page 4"},
    {"/Annots [8 0 R ]", "/Annots [3 0 R ]", "the pages do not list each annotation once"},
    {"[6 0 R\r\n/XYZ", "[3 0 R\r\n/XYZ", "the destination of object 8"},
    {"/XYZ\r\n0\r\n0\r\n0\r\n]", "/XYZ\r\n0\r\n0\r\n1\r\n]", "the destination of object 8"},
    {"/Count 3\r\n/First", "/Count 2\r\n/First", "object 9: its count"},
    {"/Count 1\r\n/Title", "/Count 2\r\n/Title", "object 10: its count"},
    {"/First 10 0 R", "/First 12 0 R", "outline entry 12: the one in front of it"},
    {"/Last 12 0 R", "/Last 10 0 R", "object 9: its last entry"},
    {"/Parent 10 0 R", "/Parent 12 0 R", "outline entry 11: its parent"},
    {"/Next 12 0 R", "/Next 10 0 R", "outline entry 10 is there twice"},
    {"/Prev 10 0 R", "/Prev 11 0 R", "outline entry 12: the one in front of it"},
    {"\r\n>>\r\nstream", "\r\n>>\r\nStream", "the end of object 5"},
    {"/Next 12 0 R", "/Next 99 0 R", "object 10 refers to 99, which is not there"},
};

}  // namespace

TEST_P(PdfStructureOfADamagedFile, ReportsTheDamage) {
  const Damage& damage = GetParam();
  for (const bool conforming : {false, true}) {
    const std::string bytes =
        replaced(sample(conforming ? Form::Conforming : Form::Classic), damage.words, damage.others);
    const Problems problems = PdfStructure(bytes, conforming).problems();
    EXPECT_EQ(std::count(problems.begin(), problems.end(), damage.problem), 1) << testing::PrintToString(problems);
  }
}

INSTANTIATE_TEST_SUITE_P(Each, PdfStructureOfADamagedFile, testing::ValuesIn(kDamages));

TEST(PdfStructure, FindsNothingWrongInAGoodFile) {
  EXPECT_EQ(PdfStructure(sample(Form::Classic), false).problems(), Problems());
  EXPECT_EQ(PdfStructure(sample(Form::Conforming), true).problems(), Problems());
}

TEST(PdfStructure, ReturnsObjectsPagesAndContents) {
  const std::string bytes = sample(Form::Classic);
  const PdfStructure file(bytes, false);
  EXPECT_EQ(file.objectCount(), 12u);
  EXPECT_EQ(file.pages(), (std::vector<std::size_t>{4, 6}));
  EXPECT_EQ(file.pageCount(), 2u);
  EXPECT_EQ(file.content(0), "(one) Tj\r\n");
  EXPECT_EQ(file.content(1), "(two) Tj\r\n");
  EXPECT_EQ(file.content(2), "");
  EXPECT_EQ(file.entry(10, "Title"), "(One)");
  EXPECT_EQ(file.entry(4, "Annots"), "[8 0 R ]");
  EXPECT_EQ(file.entry(4, "Rotate"), "");
  EXPECT_EQ(file.entry(13, "Type"), "");
  EXPECT_EQ(file.object(2),
            "2 0 obj\r\n<<\r\n/Type /Pages\r\n/Count 2\r\n/Kids [4 0 R 6 0 R ]\r\n\r\n>>\r\nendobj\r\n\r\n");
  EXPECT_EQ(file.object(0), "");
  EXPECT_EQ(file.object(13), "");
}

TEST(PdfStructure, InterpretsLengthsByTheForm) {
  const auto lengths = [](const Problems& problems) {
    return std::count_if(problems.begin(), problems.end(),
                         [](const std::string& problem) { return problem.starts_with("the length of object "); });
  };
  EXPECT_EQ(lengths(PdfStructure(sample(Form::Classic), true).problems()), 2);
  EXPECT_EQ(lengths(PdfStructure(sample(Form::Conforming), false).problems()), 2);
}

TEST(PdfStructure, ReportsAStreamOfTheWrongLength) {
  const std::string bytes = sample(Form::Conforming);
  for (const char* const length : {"/Length 11", "/Length 09", "/Length 99"}) {
    const std::string other = replaced(bytes, "/Length 10", length);
    const Problems problems = PdfStructure(other, true).problems();
    EXPECT_EQ(std::count(problems.begin(), problems.end(), "the length of object 5"), 1) << length;
  }
}

TEST(PdfStructure, ReportsATableAtTheWrongOffset) {
  const std::string bytes = sample(Form::Classic);
  const std::size_t at = bytes.find("startxref\r\n") + 11;
  for (const char* const number : {"0", "1", "9999999", "-1", "", "99999999999999999999999"}) {
    const std::string other = bytes.substr(0, at) + number + "\r\n%%EOF";
    EXPECT_EQ(PdfStructure(other, false).problems(), Problems{"startxref does not lead to the table"}) << number;
  }
}

TEST(PdfStructure, ReportsBytesAfterTheEnd) {
  EXPECT_EQ(PdfStructure(sample(Form::Classic) + "\n", false).problems(),
            (Problems{"the end of the file", "the trailer"}));
}

TEST(PdfStructure, ReportsEveryTruncation) {
  const std::string bytes = sample(Form::Classic);
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_NE(PdfStructure(bytes.substr(0, size), false).problems(), Problems()) << size;
  }
}

TEST(PdfStructure, ReportsEveryMissingByte) {
  const std::string bytes = sample(Form::Conforming);
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    std::string other = bytes;
    other.erase(at, 1);
    EXPECT_NE(PdfStructure(other, true).problems(), Problems()) << at;
  }
}

TEST(PdfStructure, AllowsAMissingEmptyOutlineOnlyInClassicForm) {
  FileOnDisk file;
  file.pdf.CreateOutlines();
  const std::string bytes = file.saved();
  EXPECT_EQ(PdfStructure(bytes, false).problems(), Problems());
  EXPECT_EQ(PdfStructure(bytes, true).problems(),
            (Problems{"the offset of object 3", "object 1 refers to 3, which is not there"}));
}

TEST(PdfStructure, AllowsAnUnlinkedOutlineEntryOnlyInClassicForm) {
  for (const Form form : {Form::Classic, Form::Conforming}) {
    FileOnDisk file(form);
    addOutlineEntry(file.pdf, u"Nowhere", nullptr);
    const std::string bytes = file.saved();
    const Problems expected =
        form == Form::Classic ? Problems() : Problems{"the outline does not have each of its entries"};
    EXPECT_EQ(PdfStructure(bytes, form == Form::Conforming).problems(), expected);
  }
}

TEST(PdfStructure, AllowsALinkToObject0OnlyInClassicForm) {
  const std::string classic = replaced(sample(Form::Classic), "[6 0 R\r\n/XYZ", "[0 0 R\r\n/XYZ");
  EXPECT_EQ(PdfStructure(classic, false).problems(), Problems());
  const std::string conforming = replaced(sample(Form::Conforming), "[6 0 R\r\n/XYZ", "[0 0 R\r\n/XYZ");
  EXPECT_EQ(PdfStructure(conforming, true).problems(),
            (Problems{"object 8 refers to 0, which is not there", "the destination of object 8"}));
}

TEST(PdfStructure, ReadsTextsThatLookLikeStructure) {
  for (const Form form : {Form::Classic, Form::Conforming}) {
    FileOnDisk file(form);
    fillSample(file.pdf);
    addOutlineEntry(file.pdf, u") 99 0 R [ << (\r\nendobj", nullptr).linkBelow(*file.pdf.outlines, *file.pdf.outlines);
    const std::string bytes = file.saved();
    EXPECT_EQ(PdfStructure(bytes, form == Form::Conforming).problems(), Problems());
  }
}

TEST(PdfStructure, FollowsADeepOutline) {
  FileOnDisk file;
  file.pdf.CreateOutlines();
  OutlineNode* node = file.pdf.outlines;
  for (int level = 0; level < 20000; ++level) {
    auto& entry = addOutlineEntry(file.pdf, u"x", nullptr);
    entry.linkBelow(*node, *file.pdf.outlines);
    node = &entry;
  }
  const std::string bytes = file.saved();
  EXPECT_EQ(PdfStructure(bytes, false).problems(), Problems());
}
