#include "api/api_support.h"
#include "document_check.h"
#include "markup_check.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace {

constexpr int kDeepest = 1000;

// Why a document of a format is not well-formed; empty for a good one, and for a format that other tests open.
std::string problemOf(const std::string& format, const std::string& bytes) {
  if (format == "html" || format == "xml") {
    return scrivalen::fuzz::problemOfTags(bytes);
  }
  return format == "rtf" ? scrivalen::fuzz::problemOfRtf(bytes.substr(0, bytes.rfind('}') + 1)) : std::string();
}

bool isPlain(const std::string& format) { return format == "text" || format == "html" || format == "xml"; }

template <typename Write>
void expectWellFormed(Write write) {
  for (std::size_t i = 0; scrivalen_format(i); ++i) {
    const std::string format = scrivalen_format(i);
    if (format == "chm") {  // pages as in html, which a program compiles that not every system has
      continue;
    }
    SCOPED_TRACE(format);
    Written document(format.c_str());
    write(document.get());
    const std::string& bytes = document.closed();
    EXPECT_EQ(document.result, SCRIVALEN_OK) << document.error();
    EXPECT_EQ(problemOf(format, bytes), "");
    EXPECT_FALSE(bytes.empty());
    EXPECT_TRUE(!isPlain(format) || bytes.find("innermost") != std::string::npos);
  }
}

// Begins parts of a kind until no more are taken.
template <typename Begin>
void fill(scrivalen_document* document, Begin begin) {
  for (int depth = 0; depth < kDeepest; ++depth) {
    ASSERT_EQ(begin(depth), SCRIVALEN_OK) << depth << ": " << scrivalen_error(document);
  }
  EXPECT_EQ(begin(kDeepest), SCRIVALEN_MISUSE);
}

// A table within quotes and items, so many that no part is left for its cells to hold.
void writeDeepTable(scrivalen_document* document) {
  for (int depth = 0; depth < kDeepest - 4; depth += 3) {
    scrivalen_begin_quote(document);
    scrivalen_begin_list(document, 1, depth, 0);
    ASSERT_EQ(scrivalen_begin_item(document, 0), SCRIVALEN_OK) << depth;
  }
  ASSERT_EQ(scrivalen_begin_table(document, nullptr, 0, "deep"), SCRIVALEN_OK) << scrivalen_error(document);
  for (int row = 0; row < 2; ++row) {
    ASSERT_EQ(scrivalen_begin_row(document, 0), SCRIVALEN_OK);
    EXPECT_EQ(scrivalen_cell(document, "innermost", kNul), SCRIVALEN_OK);
    ASSERT_EQ(scrivalen_begin_cell(document, nullptr), SCRIVALEN_OK);
    EXPECT_EQ(scrivalen_text(document, "text", kNul), SCRIVALEN_OK);
    EXPECT_EQ(scrivalen_end(document), SCRIVALEN_OK);
    EXPECT_EQ(scrivalen_end(document), SCRIVALEN_OK);
  }
}

}  // namespace

TEST(DeepNesting, OfQuotesClosesWell) {
  expectWellFormed([](scrivalen_document* document) {
    fill(document, [&](int depth) {
      return depth == kDeepest - 1 ? scrivalen_begin_paragraph(document, nullptr) : scrivalen_begin_quote(document);
    });
    scrivalen_text(document, "innermost", kNul);
  });
}

TEST(DeepNesting, OfListsClosesWell) {
  expectWellFormed([](scrivalen_document* document) {
    fill(document, [&](int depth) {
      return depth % 2 == 0 ? scrivalen_begin_list(document, depth % 4, 1, depth % 3)
                            : scrivalen_begin_item(document, depth % 3);
    });
    scrivalen_text(document, "innermost", kNul);
  });
}

TEST(DeepNesting, OfSpansClosesWell) {
  expectWellFormed([](scrivalen_document* document) {
    fill(document, [&](int depth) {
      switch (depth % 4) {
        case 0: return depth == 0 ? scrivalen_begin_paragraph(document, nullptr) : scrivalen_begin_sized(document, 9);
        case 1: return scrivalen_begin_span(document, depth % 7 + 1);
        case 2: return scrivalen_begin_colored(document, "red", nullptr);
        default: return scrivalen_begin_language(document, depth % 8 == 3 ? "ar" : "de");
      }
    });
    scrivalen_text(document, "innermost", kNul);
  });
}

TEST(DeepNesting, OfSpansInAHeadingAndACellClosesWell) {
  expectWellFormed([](scrivalen_document* document) {
    scrivalen_begin_heading(document, 1, nullptr, nullptr);
    for (int depth = 1; depth < kDeepest; ++depth) {
      ASSERT_EQ(scrivalen_begin_span(document, depth % 7 + 1), SCRIVALEN_OK);
    }
    scrivalen_text(document, "heading", kNul);
    for (int depth = 0; depth < kDeepest; ++depth) {
      ASSERT_EQ(scrivalen_end(document), SCRIVALEN_OK);
    }
    scrivalen_begin_table(document, nullptr, 0, nullptr);
    scrivalen_begin_row(document, 0);
    scrivalen_begin_cell(document, nullptr);
    for (int depth = 3; depth < kDeepest; ++depth) {
      ASSERT_EQ(scrivalen_begin_span(document, depth % 7 + 1), SCRIVALEN_OK);
    }
    scrivalen_text(document, "innermost", kNul);
  });
}

TEST(DeepNesting, OfATableClosesWell) { expectWellFormed(writeDeepTable); }
