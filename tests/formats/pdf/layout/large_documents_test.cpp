#include "formats/pdf/layout/made_pdf.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

// Limits of the layout whose documents take more than two seconds with a sanitizer or under Wine.
namespace {

using namespace scrivalen::test;

using Strings = std::vector<std::string>;

// Each line end fits on the line with all text after it, which must not be measured again for each.
TEST(PdfLimits, AllowManyLineEndsInSizeZero) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.FontSize(0);
    paragraph(doc, std::wstring(200000, L'\n').c_str());
  });
  EXPECT_EQ(pdf.pageCount(), 1u);
  EXPECT_EQ(pdf.texts(1).size(), 200001u);
}

TEST(PdfLimits, AllowAHundredThousandOutlineEntries) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.FontSize(1);
    for (int i = 0; i < 100000; ++i) {
      const std::wstring name = std::to_wstring(i);
      paragraph(doc, name.c_str());
      doc.BookMark(name.c_str());
      doc.AddOutlineItem(name.c_str(), name.c_str(), i % 10 == 0 ? 0 : 1);
    }
  });
  const std::string outline = pdf.outline();
  EXPECT_TRUE(outline.starts_with("100000 entries\n0 (9) to page 1 at 50 810\n  1 to page 1 at 50 810\n"));
  EXPECT_TRUE(outline.ends_with("\n  99999 to page 1 at 50 810\n"));
}

TEST(PdfLimits, AllowLinksToAHundredThousandNames) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.Paragraf(0);
    for (int i = 0; i < 100000; ++i) {
      const std::wstring name = std::to_wstring(i);
      doc.HyperLink(nullptr, name.c_str());
      if (i % 2 == 0) {
        doc.BookMark(name.c_str());
      }
    }
  });
  const Strings links = pdf.links();
  ASSERT_EQ(links.size(), 100000u);
  EXPECT_EQ(links[99998], "page 1 [50 802 565 802] to page 1 at 50 802");
  EXPECT_EQ(links[99999], "page 1 [50 802 565 802] to object 0 at 0 0");
}

TEST(PdfLimits, AllowAHundredThousandLinksFromOneParagraph) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.Paragraf(0);
    doc.BookMark(L"here");
    for (int i = 0; i < 100000; ++i) {
      doc.HyperLink(nullptr, L"here");
    }
  });
  EXPECT_EQ(pdf.links(), Strings(100000, "page 1 [50 802 565 802] to page 1 at 50 802"));
}

TEST(PdfLimits, AllowAThousandFonts) {
  const MadePdf pdf = made([](CPDFdoc& doc) {
    for (int i = 1; i <= 1000; ++i) {
      doc.AddFont(1000 + i, static_cast<PDF_STANDARD_FONT_FACE>(i % 19));
    }
    for (int i = 1; i <= 1000; ++i) {
      doc.FontNo(1000 + i);
      paragraph(doc, L"a");
    }
  });
  // The pages come after 2,000 fonts.
  ASSERT_EQ(pdf.pageCount(), 32u);
  EXPECT_NE(pdf.object(2003).find("/Font <<\r\n/F1001 3 0 R\r\n/F1002 4 0 R\r\n"), std::string_view::npos);
  EXPECT_NE(pdf.object(2003).find("\r\n/F3000 2002 0 R\r\n>>\r\n"), std::string_view::npos);
  EXPECT_NE(pdf.content(32).find("/F2000 12 Tf\n"), std::string::npos);
}

// A letter has 491 points; two fit neither side by side nor below each other.
TEST(PdfLimits, AllowALongTextWithAPageForEachLetter) {
  const std::wstring text(20000, L'W');
  const MadePdf pdf = madeInTimes([&](CPDFdoc& doc) {
    doc.FontSize(500);
    paragraph(doc, text.c_str());
  });
  // The gap before it takes a page of its own.
  ASSERT_EQ(pdf.pageCount(), 20001u);
  EXPECT_EQ(pdf.texts(1), Strings{});
  EXPECT_EQ(pdf.texts(2), Strings{"W"});
  EXPECT_EQ(pdf.texts(20001), Strings{"W"});
}

TEST(PdfLimits, AllowACellWithThreePagesForEachLetter) {
  const std::wstring text(5000, L'W');
  const MadePdf pdf = madeInTimes([&](CPDFdoc& doc) {
    doc.FontSize(500);
    doc.BeginTable();
    row(doc, {text.c_str()});
  });
  EXPECT_EQ(pdf.pageCount(), 1 + 3 * 4999u);
  EXPECT_EQ(pdf.texts(pdf.pageCount()), Strings{"W"});
}

}  // namespace
