#include "formats/help/help_compiler.h"
#include "scrivalen/document.h"
#include "support/captured_log.h"
#include "support/files.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "system/process/process.h"
#include "text/utf.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

// These tests are in a separate program that has no help compiler next to it.

TEST(HelpDocumentWithoutACompiler, FailsAloneAndSaysWhatIsMissing) {
  const CapturedLog log;
  const CapturedErrorBox box;
  const TemporaryFolder folder;
  writeBytes(folder / L"a.chm", "earlier");
  scrivalen_document* const document = scrivalen_new();
  scrivalen_add_file(document, scrivalen::narrowPath(folder / L"a.chm").c_str(), nullptr);
  scrivalen_add_file(document, scrivalen::narrowPath(folder / L"a.txt").c_str(), nullptr);
  EXPECT_EQ(scrivalen_paragraph(document, "text", SCRIVALEN_NUL), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_close(document), SCRIVALEN_FILE_ERROR);
  const std::wstring reason = scrivalen::systemErrorText(scrivalen::runProgram({L"hhc.exe"}).error);
  EXPECT_EQ(scrivalen_error(document), "cannot write '" + scrivalen::toUtf8(folder / L"a.chm") +
                                           "': the help compiler could not be started: \"hhc.exe\" \"report.hhp\" " +
                                           scrivalen::toUtf8(reason) + " " +
                                           scrivalen::toUtf8(scrivalen::formats::helpCompilerAdvice()));
  EXPECT_EQ(scrivalen_output_result(document, 1), SCRIVALEN_OK);
  scrivalen_free(document);
  EXPECT_EQ(bytesOf(folder / L"a.chm"), "earlier");
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "text\n");
  EXPECT_TRUE(log.lines().empty());
  EXPECT_TRUE(box.shown().empty());
}
