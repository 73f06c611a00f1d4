#include "readers/text_input.h"

#include "command_support.h"
#include "errors.h"
#include "texts.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace scrivalen::command::test {
namespace {

using namespace std::string_literals;

struct Reading {
  std::string text;
  std::size_t replaced = 0;
  bool isDoubtful = false;
};

std::string refusal(const std::string& bytes, InputEncoding encoding = InputEncoding::Default) {
  TestEnvironment environment;
  environment.input = bytes;
  try {
    TextInput(environment.get(), "-", encoding).rest();
    return "";
  } catch (const InputError& error) {
    return error.what();
  }
}

Reading readAll(const std::string& bytes, InputEncoding encoding = InputEncoding::Default) {
  TestEnvironment environment;
  environment.input = bytes;
  TextInput input(environment.get(), "-", encoding);
  Reading reading;
  reading.text = input.rest();
  reading.replaced = input.replaced();
  reading.isDoubtful = input.isEncodingDoubtful();
  return reading;
}

// Supplies one byte per call, as a slow pipe may.
Reading readByteByByte(const std::string& bytes) {
  TestEnvironment environment;
  environment.input = bytes;
  const auto whole = environment.get().readInput;
  environment.get().readInput = [whole](void* data, std::size_t size) {
    return whole(data, std::min<std::size_t>(1, size));
  };
  TextInput input(environment.get(), "-");
  Reading reading;
  reading.text = input.rest();
  reading.replaced = input.replaced();
  return reading;
}

TEST(TextInput, ReadsStandardInput) {
  EXPECT_EQ(readAll("one\ntwo é 😀").text, "one\ntwo é 😀");
  EXPECT_EQ(readAll("").text, "");
}

TEST(TextInput, ReadsAFile) {
  CommandRun folder;
  folder.with("grüße.md", "Grüße");
  TextInput input(folder.environment.get(), folder.path("grüße.md"));
  EXPECT_EQ(input.rest(), "Grüße");
}

TEST(TextInput, ReportsWhyAFileCannotBeRead) {
  CommandRun folder;
  try {
    TextInput(folder.environment.get(), folder.path("missing.md"));
    FAIL() << "the file was read";
  } catch (const InputError& error) {
    EXPECT_TRUE(std::string(error.what()).starts_with("cannot read '" + folder.path("missing.md") + "': "));
  }
}

TEST(TextInput, ReportsThatStandardInputCannotBeRead) {
  TestEnvironment environment;
  environment.get().readInput = [](void*, std::size_t) { return std::nullopt; };
  EXPECT_THROW(TextInput(environment.get(), "-").rest(), InputError);
}

TEST(TextInput, RemovesTheByteOrderMark) {
  EXPECT_EQ(readAll("\xEF\xBB\xBFtext").text, "text");
  EXPECT_EQ(readAll("\xEF\xBB\xBF").text, "");
  EXPECT_EQ(readByteByByte("\xEF\xBB\xBFtext").text, "text");
}

TEST(TextInput, ConvertsUtf16OfBothByteOrders) {
  EXPECT_EQ(readAll("\xFF\xFE"s + "a\0\xAC\x20\x3D\xD8\x00\xDE"s).text, "a€😀");
  EXPECT_EQ(readAll("\xFE\xFF"s + "\0a\x20\xAC\xD8\x3D\xDE\x00"s).text, "a€😀");
  EXPECT_EQ(readByteByByte("\xFF\xFE"s + "a\0\xAC\x20\x3D\xD8\x00\xDE"s).text, "a€😀");
}

TEST(TextInput, ReplacesAndCountsInvalidUtf16) {
  const Reading reading = readAll("\xFF\xFE"s + "\x3D\xD8" + "a\0"s + "\0\0"s + "b"s);
  EXPECT_EQ(reading.text, "\uFFFDa\uFFFD\uFFFD");
  EXPECT_EQ(reading.replaced, 3u);
}

TEST(TextInput, ConvertsTheEncodingThatIsGiven) {
  EXPECT_EQ(readAll("Gr\xFC\xDF"s + "e, \xA4", InputEncoding::Latin1).text, "Grüße, ¤");
  EXPECT_EQ(readAll("\x80 \x93q\x94 \xFF \x9F", InputEncoding::Windows1252).text, "€ “q” ÿ Ÿ");
  EXPECT_EQ(readAll("a\0\xAC\x20\x3D\xD8\x00\xDE"s, InputEncoding::Utf16Little).text, "a€😀");
  EXPECT_EQ(readAll("\0a\x20\xAC\xD8\x3D\xDE\x00"s, InputEncoding::Utf16Big).text, "a€😀");
  EXPECT_EQ(readAll("Grüße", InputEncoding::Utf8).text, "Grüße");
}

TEST(TextInput, BelievesAByteOrderMarkBeforeTheEncodingThatIsGiven) {
  for (const InputEncoding encoding : {InputEncoding::Latin1, InputEncoding::Windows1252, InputEncoding::Utf8,
                                       InputEncoding::Utf16Little, InputEncoding::Utf16Big}) {
    EXPECT_EQ(readAll("\xEF\xBB\xBFGrüße", encoding).text, "Grüße");
    EXPECT_EQ(readAll("\xFE\xFF"s + "\0a"s, encoding).text, "a");
    EXPECT_EQ(readAll("\xFF\xFE"s + "a\0"s, encoding).text, "a");
  }
}

TEST(TextInput, ReplacesAndCountsBytesWithoutACharacter) {
  const Reading reading = readAll("a\x81\x8D\x8F\x90\x9D\0z"s, InputEncoding::Windows1252);
  EXPECT_EQ(reading.text, "a\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDz");
  EXPECT_EQ(reading.replaced, 6u);
  EXPECT_EQ(readAll("a\x81\xA0", InputEncoding::Latin1).text, "a\u0081\u00A0");
}

TEST(TextInput, DoubtsOnlyAnEncodingThatWasNotGiven) {
  EXPECT_TRUE(readAll("a\xFCz").isDoubtful);
  EXPECT_FALSE(readAll("Gr\xC3\xBC\0"s).isDoubtful);
  EXPECT_FALSE(readAll("a\xFCz", InputEncoding::Utf8).isDoubtful);
  EXPECT_FALSE(readAll("\xFF\xFE\x3D\xD8"s).isDoubtful);
}

TEST(TextInput, SaysThatABinaryMayBeUtf16) {
  std::string little;
  std::string big;
  std::string binary;
  for (int i = 0; i < 100; ++i) {
    little += "a\0"s;
    big += "\0a"s;
    binary += "a\0\0\1"s;
  }
  const std::string reason = "'-' is not a text file";
  EXPECT_EQ(refusal(little), reason + "; it may be UTF-16 without a byte-order mark: --encoding utf-16le");
  EXPECT_EQ(refusal(big), reason + "; it may be UTF-16 without a byte-order mark: --encoding utf-16be");
  EXPECT_EQ(refusal(binary), reason);
  EXPECT_EQ(refusal(binary, InputEncoding::Latin1), reason);
  EXPECT_EQ(refusal(little, InputEncoding::Utf16Little), "");
}

TEST(TextInput, RefusesFilesByTheirFirstBytes) {
  const std::string text(100, 'a');
  const std::string reason = "'-' is not a text file; it is ";
  EXPECT_EQ(refusal("%PDF-1.4\n" + text), reason + "a PDF");
  EXPECT_EQ(refusal("\x1F\x8B" + text), reason + "compressed by gzip");
  EXPECT_EQ(refusal("BZh91AY&SY" + text), reason + "compressed by bzip2");
  EXPECT_EQ(refusal("BZh9\x17rE8P\x90" + text), reason + "compressed by bzip2");
  EXPECT_EQ(refusal("\xFD"
                    "7zXZ\0" +
                    text),
            reason + "compressed by xz");
  EXPECT_EQ(refusal("PK\x03\x04" + text), reason + "a ZIP file, as spreadsheets and many other documents are");
  EXPECT_EQ(refusal("\xD0\xCF\x11\xE0" + text), reason + "a document of an office program");
  EXPECT_EQ(refusal("\x89PNG\r\n" + text), reason + "a picture");
  EXPECT_EQ(refusal("\xFF\xD8\xFF\xE0" + text), reason + "a picture");
  EXPECT_EQ(refusal("\x7F"
                    "ELF" +
                    text),
            reason + "a program");
  EXPECT_EQ(refusal("%PDF-1.4\n", InputEncoding::Latin1), reason + "a PDF");
  for (const char* const beginning : {"BZh", "BZhang,1", "PK,1", "% PDF-"}) {
    EXPECT_EQ(refusal(beginning), "");
  }
}

TEST(TextInput, JudgesAPipeByMoreThanItsFirstBytes) {
  TestEnvironment environment;
  environment.input = std::string(100, 'a') + std::string(1000, '\1');
  const auto whole = environment.get().readInput;
  environment.get().readInput = [whole](void* data, std::size_t size) {
    return whole(data, std::min<std::size_t>(10, size));
  };
  EXPECT_THROW(TextInput(environment.get(), "-").rest(), InputError);
}

TEST(TextInput, RefusesUtf32) {
  const std::string reason = "'-' is in UTF-32, which is not supported; UTF-8 and UTF-16 are";
  EXPECT_EQ(refusal("\xFF\xFE\0\0a\0\0\0"s), reason);
  EXPECT_EQ(refusal("\0\0\xFE\xFF\0\0\0a"s), reason);
  EXPECT_EQ(refusal("\xFF\xFE\0\0a\0\0\0"s, InputEncoding::Utf16Little), reason);
}

TEST(TextInput, NeedsAByteOrderMarkWhereItDecidesHowUtf16IsRead) {
  EXPECT_EQ(refusal("a\0b\0"s, InputEncoding::Utf16),
            "'-' has no byte-order mark: --encoding utf-16le or utf-16be says which UTF-16 it is");
  EXPECT_EQ(readAll("\xFE\xFF"s + "\0a"s, InputEncoding::Utf16).text, "a");
  EXPECT_EQ(readAll("\xFF\xFE"s + "a\0"s, InputEncoding::Utf16).text, "a");
}

TEST(TextInput, ReplacesManyNulsInOnePassThroughTheText) {
  std::string text;
  for (int i = 0; i < 200000; ++i) {
    text += "a ";
  }
  text += std::string(2000000, '\0') + text;
  std::string decoded;
  EXPECT_EQ(SingleByteDecoder(InputEncoding::Latin1).append(decoded, text), 2000000u);
  EXPECT_EQ(decoded.size(), text.size() + 4000000);
  EXPECT_TRUE(decoded.ends_with("\uFFFDa " + text.substr(text.size() - 399998)));
}

TEST(InputEncodings, HaveTheirUsualNames) {
  for (const char* const name : {"latin-1", "LATIN1", "iso-8859-1", "ISO_8859-1"}) {
    EXPECT_EQ(encodingNamed(name), InputEncoding::Latin1) << name;
  }
  for (const char* const name : {"windows-1252", "Windows1252", "cp1252", "CP-1252"}) {
    EXPECT_EQ(encodingNamed(name), InputEncoding::Windows1252) << name;
  }
  EXPECT_EQ(encodingNamed("UTF-8"), InputEncoding::Utf8);
  EXPECT_EQ(encodingNamed("utf-16"), InputEncoding::Utf16);
  EXPECT_EQ(encodingNamed("utf-16LE"), InputEncoding::Utf16Little);
  EXPECT_EQ(encodingNamed("utf16be"), InputEncoding::Utf16Big);
  EXPECT_EQ(encodingNamed("latin-2"), std::nullopt);
  EXPECT_EQ(encodingNamed(""), std::nullopt);
}

TEST(TextInput, ReplacesAndCountsInvalidUtf8) {
  const Reading reading = readAll(
      "a\xFF"
      "b\xE2\x82"
      "c\0d\xC3"s);
  EXPECT_EQ(reading.text, "a\uFFFDb\uFFFDc\uFFFDd\uFFFD");
  EXPECT_EQ(reading.replaced, 4u);
}

TEST(TextInput, ReplacesTheSameHoweverTheInputIsSplit) {
  const Reading reading = readByteByByte(
      "a\xFF"
      "b\xE2\x82"
      "c\0d\xC3"s);
  EXPECT_EQ(reading.text, "a\uFFFDb\uFFFDc\uFFFDd\uFFFD");
  EXPECT_EQ(reading.replaced, 4u);
}

TEST(TextInput, KeepsACharacterSplitAcrossTwoReads) {
  for (std::size_t shift = 0; shift < 4; ++shift) {
    std::string text(shift, 'x');
    for (int i = 0; i < 200000; ++i) {
      text += "😀";
    }
    const Reading reading = readAll(text);
    EXPECT_TRUE(reading.text == text) << shift;
    EXPECT_EQ(reading.replaced, 0u);
  }
  EXPECT_EQ(readByteByByte("é€😀").text, "é€😀");
}

}  // namespace
}  // namespace scrivalen::command::test
