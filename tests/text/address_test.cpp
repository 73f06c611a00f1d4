#include "text/address.h"

#include "text/utf.h"

#include <gtest/gtest.h>

using namespace scrivalen;

namespace {

// In both encodings.
bool runsAsLink(std::wstring_view address) {
  const bool result = runsProgram(address, AddressUse::Link);
  EXPECT_EQ(runsProgram(toUtf8(address), AddressUse::Link), result);
  return result;
}

TEST(Addresses, RunAProgramByTheirScheme) {
  EXPECT_TRUE(runsAsLink(L"javascript:alert(1)"));
  EXPECT_TRUE(runsAsLink(L"vbscript:x"));
  EXPECT_TRUE(runsAsLink(L"data:text/html,x"));
}

TEST(Addresses, RunScriptsOfOldBrowsers) {
  for (const std::wstring_view address :
       {L"livescript:x", L"mocha:x", L"about:<script>x</script>", L"url:javascript:x", L"feed:javascript:x",
        L"view-source:javascript:x", L"jar:http://x.org/y.jar!/z.html"}) {
    EXPECT_TRUE(runsAsLink(address));
  }
}

TEST(Addresses, RunMacrosAndCommandsOfLibreOffice) {
  for (const std::wstring_view address :
       {L"macro:///Standard.Module1.Main", L"vnd.sun.star.script:x?language=Basic", L"vnd.sun.star.expand:x",
        L".uno:RunMacro", L"slot:6000", L"service:x", L"private:factory/swriter"}) {
    EXPECT_TRUE(runsAsLink(address));
  }
}

TEST(Addresses, StartProgramsOfWindows) {
  for (const std::wstring_view address :
       {L"ms-msdt:/id PCWDiagnostic", L"ms-officecmd:x", L"MS-Word:ofe|u|x", L"search-ms:query=x", L"search:query=x",
        L"shell:startup", L"hcp://x", L"help:x"}) {
    EXPECT_TRUE(runsAsLink(address));
  }
}

TEST(Addresses, OpenPagesInTheHelpViewerWithItsRights) {
  for (const std::wstring_view address : {L"mk:@MSITStore:C:\\x.chm::/y.htm", L"its:x.chm::/y.htm",
                                          L"ms-its:x.chm::/y.htm", L"mhtml:file://x!y", L"res://x.dll/y"}) {
    EXPECT_TRUE(runsAsLink(address));
  }
}

TEST(Addresses, RunAProgramInAnyCaseOfTheirScheme) { EXPECT_TRUE(runsAsLink(L"jAvAsCrIpT:x")); }

TEST(Addresses, RunAProgramDespiteCharactersThatBrowsersIgnore) {
  for (const std::wstring_view address :
       {L" javascript:x", L"\tjavascript:x", L"\x01\x1F javascript:x", L"java\nscript:x", L"java\r\n\tscript\t:x",
        L"\u00A0javascript:x", L"\uFEFFjavascript:x", L"java\u200Bscript:x"}) {
    EXPECT_TRUE(runsAsLink(address));
  }
}

TEST(Addresses, RunNoProgramOtherwise) {
  for (const std::wstring_view address : {L"",
                                          L"javascript",
                                          L"x/javascript:y",
                                          L"#javascript:",
                                          L"javascripts:x",
                                          L"javascript%3Ax",
                                          L"https://x.org/data:",
                                          L"http://x.org",
                                          L"mailto:a@b.org",
                                          L"file:///x",
                                          L"ftp://x.org",
                                          L"tel:1",
                                          L"magnet:x",
                                          L"geo:1,2",
                                          L"ms",
                                          L"ms-x/y:z",
                                          L"ms:x",
                                          L"vnd.sun.starx:y",
                                          L"macros:x",
                                          L"?macro:x",
                                          L"a b:macro:",
                                          L"\u0130avascript:x",
                                          L"\u212Aavascript:x",
                                          L"data"}) {
    EXPECT_FALSE(runsAsLink(address));
  }
}

TEST(Addresses, OfImagesMayBeDataUrls) {
  EXPECT_FALSE(runsProgram(L"data:image/png;base64,AA", AddressUse::Image));
  EXPECT_TRUE(runsProgram(L"javascript:x", AddressUse::Image));
  EXPECT_TRUE(runsProgram(L"vbscript:x", AddressUse::Image));
  EXPECT_TRUE(runsProgram(L"mhtml:file://x!y", AddressUse::Image));
}

}  // namespace
