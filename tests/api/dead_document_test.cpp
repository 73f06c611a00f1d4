#include "api/api_support.h"
#include "support/faults/out_of_memory.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

using namespace scrivalen::test;

namespace {

using Document = scrivalen_document*;

scrivalen_status paragraph(Document document, scrivalen_paragraph_style style) {
  return scrivalen_begin_paragraph(document, &style);
}

scrivalen_status table(Document document, std::size_t size, int type) {
  scrivalen_column column{};
  column.size = size;
  column.type = type;
  return scrivalen_begin_table(document, &column, 1, nullptr);
}

scrivalen_status cell(Document document, scrivalen_cell_style style) { return scrivalen_begin_cell(document, &style); }

scrivalen_status rows(Document document, std::size_t size, int type) {
  scrivalen_column_data column{};
  column.size = size;
  column.type = type;
  return scrivalen_rows(document, &column, 1, 1);
}

constexpr std::size_t kStyle = sizeof(scrivalen_paragraph_style);
constexpr std::size_t kCell = sizeof(scrivalen_cell_style);
constexpr std::size_t kColumn = sizeof(scrivalen_column);
constexpr std::size_t kData = sizeof(scrivalen_column_data);

// Calls with arguments that are refused anywhere.
const Step kRefused[] = {
    {"heading's level", [](Document d) { return scrivalen_begin_heading(d, 0, nullptr, nullptr); }},
    {"whole heading's level", [](Document d) { return scrivalen_heading(d, 7, "text", kNul); }},
    {"paragraph's size",
     [](Document d) {
       return paragraph(d, {0, SCRIVALEN_LEFT});
     }},
    {"paragraph's alignment",
     [](Document d) {
       return paragraph(d, {kStyle, 5});
     }},
    {"list's number", [](Document d) { return scrivalen_begin_list(d, 1, -1, 0); }},
    {"item's task", [](Document d) { return scrivalen_begin_item(d, 3); }},
    {"table's count", [](Document d) { return scrivalen_begin_table(d, nullptr, 1000001, nullptr); }},
    {"column's size", [](Document d) { return table(d, 0, SCRIVALEN_AUTO); }},
    {"column's type", [](Document d) { return table(d, kColumn, 7); }},
    {"cell's size",
     [](Document d) {
       return cell(d, {0, 0, 0, 0, nullptr, nullptr});
     }},
    {"cell's alignment",
     [](Document d) {
       return cell(d, {kCell, 0, 5, 0, nullptr, nullptr});
     }},
    {"cell's span",
     [](Document d) {
       return cell(d, {kCell, 0, 0, -1, nullptr, nullptr});
     }},
    {"cell's colour",
     [](Document d) {
       return cell(d, {kCell, 0, 0, 0, "reddish", nullptr});
     }},
    {"cell's background",
     [](Document d) {
       return cell(d, {kCell, 0, 0, 0, nullptr, "reddish"});
     }},
    {"span's kind", [](Document d) { return scrivalen_begin_span(d, 0); }},
    {"colour", [](Document d) { return scrivalen_begin_colored(d, "reddish", nullptr); }},
    {"background", [](Document d) { return scrivalen_begin_colored(d, nullptr, "reddish"); }},
    {"size in points", [](Document d) { return scrivalen_begin_sized(d, 0); }},
    {"contents item's level", [](Document d) { return scrivalen_contents_item(d, 0, "id", "text", kNul); }},
    {"picture's bytes", [](Document d) { return scrivalen_image(d, nullptr, 1, nullptr, 0); }},
    {"picture's width", [](Document d) { return scrivalen_image(d, "", 0, nullptr, std::nan("")); }},
    {"picture file's width", [](Document d) { return scrivalen_image_file(d, "a.png", nullptr, -1); }},
    {"markup's format", [](Document d) { return scrivalen_raw(d, "text", "<b>", kNul); }},
    {"rows without columns", [](Document d) { return scrivalen_rows(d, nullptr, 1, 1); }},
    {"rows with too many columns", [](Document d) { return scrivalen_rows(d, nullptr, 1000001, 1); }},
    {"column data's size", [](Document d) { return rows(d, 0, SCRIVALEN_INTEGER); }},
    {"column data's type", [](Document d) { return rows(d, kData, SCRIVALEN_AUTO); }},
    {"Arrow array", [](Document d) { return scrivalen_rows_arrow(d, nullptr, nullptr); }},
    {"Arrow stream", [](Document d) { return scrivalen_rows_arrow_stream(d, nullptr); }},
};

void expectResultOfEachCall(Document document, scrivalen_status result, const std::string& error) {
  EXPECT_EQ(scrivalen_result(document), result);
  for (const Step& step : kRefused) {
    EXPECT_EQ(step.call(document), result) << step.name;
    EXPECT_EQ(scrivalen_error(document), error) << step.name;
  }
  // Among them are calls in places where they are refused.
  for (const Step& step : contentSteps()) {
    EXPECT_EQ(step.call(document), result) << step.name;
    EXPECT_EQ(scrivalen_error(document), error) << step.name;
  }
}

}  // namespace

TEST(DeadDocument, RefusesTheseCallsWhileItLives) {
  for (const Step& step : kRefused) {
    const Written document;
    const scrivalen_status status = step.call(document);
    EXPECT_TRUE(status == SCRIVALEN_MISUSE || status == SCRIVALEN_UNKNOWN_FORMAT) << step.name;
  }
}

TEST(DeadDocument, ReturnsItsFailureFromEveryContentCall) {
  const TemporaryFolder folder;
  const std::string missing = scrivalen::narrowPath(folder / L"missing") + "/a.txt";
  const Handle document(scrivalen_new());
  ASSERT_EQ(scrivalen_add_file(document.get(), missing.c_str(), nullptr), SCRIVALEN_OK);
  ASSERT_EQ(scrivalen_open(document.get()), SCRIVALEN_FILE_ERROR);
  expectResultOfEachCall(document.get(), SCRIVALEN_FILE_ERROR, scrivalen_error(document.get()));
}

TEST(DeadDocument, ReturnsThatItWasCancelledFromEveryContentCall) {
  const Written document;
  scrivalen_set_progress(
      document, [](void*, std::uint64_t, std::uint64_t) { return 1; }, nullptr);
  scrivalen_begin_code(document, nullptr);
  const std::string longText(200000, 'x');
  ASSERT_EQ(scrivalen_text(document, longText.data(), longText.size()), SCRIVALEN_CANCELLED);
  expectResultOfEachCall(document, SCRIVALEN_CANCELLED, "the document was cancelled");
}

TEST(DeadDocument, ReturnsThatMemoryRanOutFromEveryContentCall) {
  contentSteps();
  for (const bool isOpen : {false, true}) {
    SCOPED_TRACE(isOpen);
    const Written document;
    if (isOpen) {
      ASSERT_EQ(scrivalen_open(document), SCRIVALEN_OK);
    }
    {
      const FailingAllocations memory(1, Extent::AllFromThere);
      scrivalen_begin_table(document, nullptr, 100, "a name that is too long for a string without an allocation");
    }
    expectResultOfEachCall(document, SCRIVALEN_OUT_OF_MEMORY, "there is not enough memory");
  }
}
