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
};

Reading readAll(const std::string& bytes) {
  TestEnvironment environment;
  environment.input = bytes;
  TextInput input(environment.get(), "-");
  Reading reading;
  reading.text = input.rest();
  reading.replaced = input.replaced();
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
