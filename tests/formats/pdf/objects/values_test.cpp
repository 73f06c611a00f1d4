#include "formats/pdf/objects/values.h"

#include "formats/pdf/objects/containers.h"
#include "formats/pdf/objects/written.h"
#include "support/decimal_comma.h"
#include "support/time_zone.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace PDFStuffer;
using scrivalen::test::conforming;
using scrivalen::test::TimeZone;
using scrivalen::test::written;

namespace {

constexpr std::int64_t kMorning = 1578821405;  // 2020-01-12 09:30:05 UTC
constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr std::uint32_t kLargest = std::numeric_limits<std::uint32_t>::max();

std::string name(const std::u16string& text, Form form = Form::Classic) {
  CPDFName object(text);
  return written(object, form);
}

std::string integer(std::int32_t value) {
  CPDFNumber object(value);
  return written(object);
}

void setReal(CPDFNumber& number, double value) {
  number.isInteger = false;
  number.realValue = value;
}

std::string real(double value) {
  CPDFNumber object;
  setReal(object, value);
  return written(object);
}

std::string string(const std::u16string& text, Form form = Form::Classic) {
  CPDFString object(text);
  return written(object, form);
}

void setRaw(CPDFString& object, std::u16string_view text) {
  object.raw = std::make_unique<char16_t[]>(text.size());
  text.copy(object.raw.get(), text.size());
  object.rawLength = static_cast<std::uint32_t>(text.size());
}

std::string reference(std::uint32_t number, std::uint32_t generation) {
  CPDFName target;
  target.objectNumber = number;
  target.generation = generation;
  CPDFIndirectRef object(&target);
  return written(object);
}

std::string rectangle(std::int32_t left, std::int32_t bottom, std::int32_t right, std::int32_t top) {
  CPDFRect object(left, bottom, right, top);
  return written(object);
}

std::string date(std::int64_t seconds, Form form = Form::Classic) {
  CPDFDate object(seconds);
  return written(object, form);
}

template <typename Object>
void expectNewIsDirect() {
  const Object object;
  EXPECT_EQ(object.objectNumber, 0u);
  EXPECT_EQ(object.generation, 0u);
  EXPECT_EQ(object.fileOffset, 0u);
  EXPECT_FALSE(object.dictionaryFlag);
  EXPECT_TRUE(object.children.empty());
}

}  // namespace

TEST(PdfValues, HaveNoNumberAndAreNoDictionaries) {
  expectNewIsDirect<CPDFName>();
  expectNewIsDirect<CPDFNumber>();
  expectNewIsDirect<CPDFString>();
  expectNewIsDirect<CPDFIndirectRef>();
  expectNewIsDirect<CPDFRect>();
  expectNewIsDirect<CPDFDate>();
  expectNewIsDirect<CPDFArray>();
}

TEST(PdfValues, WriteTheExpectedTexts) {
  EXPECT_EQ(name(u"Catalog"), "/Catalog");
  EXPECT_EQ(integer(42), "42");
  EXPECT_EQ(real(1.5), "      1.50");
  EXPECT_EQ(string(u"Chapter 1"), "(Chapter 1)");
  EXPECT_EQ(reference(12, 0), "12 0 R");
  EXPECT_EQ(rectangle(0, 0, 595, 840), "[0 0 595 840]");
  EXPECT_EQ(date(kMorning), "(D20200112093005Z)");
}

TEST(PdfName, IsASlashWhenEmpty) {
  EXPECT_EQ(name(u""), "/");
  EXPECT_EQ(name(u"", Form::Conforming), "/");
}

TEST(PdfName, IsNotEscaped) {
  EXPECT_EQ(name(u"two words"), "/two words");
  EXPECT_EQ(name(u"()<>[]{}/%#\r\n"), "/()<>[]{}/%#\r\n");
}

TEST(PdfName, WritesTheLowByteOfEachCodeUnit) { EXPECT_EQ(name(u"\u00E9\u0142\u20AC"), "/\xE9\x42\xAC"); }

TEST(PdfConformingName, EscapesBlanksAndDelimiters) {
  EXPECT_EQ(name(u"two words", Form::Conforming), "/two#20words");
  EXPECT_EQ(name(u"()<>[]{}/%#", Form::Conforming), "/#28#29#3C#3E#5B#5D#7B#7D#2F#25#23");
  EXPECT_EQ(name(u"\t\r\n", Form::Conforming), "/#09#0D#0A");
}

TEST(PdfConformingName, EscapesNonPrintableCharacters) {
  EXPECT_EQ(name(u"\u001F!~\u007F\u00E9\u20AC", Form::Conforming), "/#1F!~#7F#E9#AC");
}

TEST(PdfConformingName, KeepsRegularCharacters) {
  EXPECT_EQ(name(u"A;Name_With-Various***Characters?", Form::Conforming), "/A;Name_With-Various***Characters?");
}

// PDF 1.4, 3.2.4: a name has any character but the null.
TEST(PdfConformingName, DropsNullCharacters) { EXPECT_EQ(name(u"a\u0100b", Form::Conforming), "/ab"); }

TEST(PdfNumber, IsAnIntegerZeroByDefault) {
  const CPDFNumber number;
  EXPECT_TRUE(number.isInteger);
  EXPECT_EQ(number.intValue, 0);
  EXPECT_EQ(number.realValue, 0.0);
}

TEST(PdfNumber, WritesIntegersWithoutBlanksOrZeros) {
  EXPECT_EQ(integer(0), "0");
  EXPECT_EQ(integer(-1), "-1");
  EXPECT_EQ(integer(1000000), "1000000");
  EXPECT_EQ(integer(kMost), "2147483647");
  EXPECT_EQ(integer(kLeast), "-2147483648");
}

TEST(PdfNumber, WritesRealNumbersTenCharactersWide) {
  EXPECT_EQ(real(0), "      0.00");
  EXPECT_EQ(real(100), "    100.00");
  EXPECT_EQ(real(-1.5), "     -1.50");
  EXPECT_EQ(real(1234567.891), "1234567.89");
}

TEST(PdfNumber, WritesWiderRealNumbersInFull) {
  EXPECT_EQ(real(12345678.9), "12345678.90");
  EXPECT_EQ(real(-12345678.9), "-12345678.90");
}

TEST(PdfNumber, RoundsRealNumbersAsTheyAreStored) {
  EXPECT_EQ(real(0.125), "      0.12");
  EXPECT_EQ(real(0.375), "      0.38");
  EXPECT_EQ(real(2.675), "      2.67");
  EXPECT_EQ(real(0.005), "      0.01");
  EXPECT_EQ(real(-0.001), "     -0.00");
  EXPECT_EQ(real(1e-300), "      0.00");
}

TEST(PdfNumber, IsTruncatedTo127Characters) {
  EXPECT_EQ(
      real(1e123),
      "999999999999999977709969731404129670057984297594921577392083322662491290889839886077866558841507631684757522"
      "070951350501376.00");
  EXPECT_EQ(
      real(1e124),
      "999999999999999948353187446731214321439476837728208735196051461308492907048702741925253744908902088388520042"
      "2613425626021888.00");
  EXPECT_EQ(
      real(1e125),
      "999999999999999924867761618992882042544670869834838461439225972225294199975793026603163493762817653751530058"
      "41365553228283904.0");
  EXPECT_EQ(
      real(1e200),
      "999999999999999969733122212510361659474503275455023626482417509503468484355540755341963384047062518680275124"
      "1597388240818213573");
  EXPECT_EQ(real(std::numeric_limits<double>::max()).size(), 127u);
}

TEST(PdfNumber, IgnoresTheLocale) {
  const scrivalen::test::DecimalComma comma;
  EXPECT_EQ(real(1234.5), "   1234.50");
  EXPECT_EQ(integer(1234567), "1234567");
  EXPECT_EQ(reference(12345, 0), "12345 0 R");
  EXPECT_EQ(rectangle(0, 0, 1595, 1840), "[0 0 1595 1840]");
  EXPECT_EQ(date(kMorning), "(D20200112093005Z)");
}

TEST(PdfNumberCopy, KeepsAnInteger) {
  const CPDFNumber number(7);
  CPDFNumber copy(number);
  EXPECT_EQ(copy.intValue, 7);
  EXPECT_EQ(copy.realValue, 7.0);
  EXPECT_TRUE(copy.isInteger);
  EXPECT_EQ(written(copy), "7");
}

TEST(PdfNumberCopy, TreatsAnIntegerAsUnsignedForItsRealValue) {
  const CPDFNumber number(-1);
  CPDFNumber copy(number);
  EXPECT_EQ(copy.realValue, 4294967295.0);
  EXPECT_EQ(copy.intValue, -1);
  EXPECT_EQ(written(copy), "-1");
}

TEST(PdfNumberCopy, OfARealNumberIsTruncatedToAnInteger) {
  CPDFNumber number;
  setReal(number, 2.9);
  CPDFNumber copy(number);
  EXPECT_TRUE(copy.isInteger);
  EXPECT_EQ(copy.intValue, 2);
  EXPECT_EQ(copy.realValue, 2.9);
  EXPECT_EQ(written(copy), "2");
  setReal(number, -2.9);
  CPDFNumber negative(number);
  EXPECT_EQ(written(negative), "-2");
}

TEST(PdfNumberCopy, OfARealNumberIgnoresItsIntegerValue) {
  CPDFNumber number(99);
  setReal(number, 3.5);
  EXPECT_EQ(CPDFNumber(number).intValue, 3);
}

TEST(PdfNumberCopy, IsClampedToTheRangeOfIntegers) {
  CPDFNumber number;
  setReal(number, 1e10);
  EXPECT_EQ(CPDFNumber(number).intValue, kMost);
  setReal(number, -1e10);
  EXPECT_EQ(CPDFNumber(number).intValue, kLeast);
  setReal(number, std::nan(""));
  EXPECT_EQ(CPDFNumber(number).intValue, 0);
}

TEST(PdfNumberCopy, IsDirectAndNoDictionary) {
  CPDFNumber number(7);
  number.objectNumber = 5;
  number.dictionaryFlag = true;
  const CPDFNumber copy(number);
  EXPECT_EQ(copy.objectNumber, 0u);
  EXPECT_FALSE(copy.dictionaryFlag);
}

TEST(PdfString, IsAPairOfParenthesesWhenEmpty) {
  EXPECT_EQ(string(u""), "()");
  EXPECT_EQ(string(u"", Form::Conforming), "()");
}

TEST(PdfString, IsNotEscaped) { EXPECT_EQ(string(u"a(b)c) d\\e\r\nf"), "(a(b)c) d\\e\r\nf)"); }

TEST(PdfString, WritesTheLowByteOfEachCodeUnit) { EXPECT_EQ(string(u"\u00E9\u0142\u20AC"), "(\xE9\x42\xAC)"); }

TEST(PdfString, WritesRawCharactersInsteadOfItsText) {
  CPDFString object(u"text");
  setRaw(object, {u"r\0w", 3});
  EXPECT_EQ(written(object), std::string("(r\0w)", 5));
}

TEST(PdfString, WritesItsTextWhenTheRawLengthIsZero) {
  CPDFString object(u"text");
  setRaw(object, u"raw");
  object.rawLength = 0;
  EXPECT_EQ(written(object), "(text)");
}

TEST(PdfString, WritesNoMoreThanTheRawLength) {
  CPDFString object(u"text");
  setRaw(object, u"raw");
  object.rawLength = 2;
  EXPECT_EQ(written(object), "(ra)");
}

TEST(PdfConformingString, EscapesParenthesesBackslashesAndLineEnds) {
  EXPECT_EQ(string(u"a(b)c\\d\re\nf\tg", Form::Conforming), "(a\\(b\\)c\\\\d\\re\\nf\tg)");
}

TEST(PdfConformingString, EscapesRawCharactersToo) {
  CPDFString object(u"text");
  setRaw(object, u"(raw)");
  EXPECT_EQ(conforming(object), "(\\(raw\\))");
}

TEST(PdfConformingString, IsMarkedUtf16WhenItIsNotAscii) {
  EXPECT_EQ(string(u"h\u00E9", Form::Conforming), std::string("(\xFE\xFF\0h\0\xE9)", 8));
  EXPECT_EQ(string(u"\u20AC", Form::Conforming), "(\xFE\xFF\x20\xAC)");
  EXPECT_EQ(string(u"\u007F", Form::Conforming), std::string("(\xFE\xFF\0\x7F)", 6));
  EXPECT_EQ(string(u"\U0001F600", Form::Conforming), std::string("(\xFE\xFF\xD8\x3D\xDE\0)", 8));
}

TEST(PdfConformingString, EscapesTheBytesOfUtf16) {
  EXPECT_EQ(string(u"\u00E9(", Form::Conforming), std::string("(\xFE\xFF\0\xE9\0\\()", 9));
  EXPECT_EQ(string(u"\u2829", Form::Conforming), "(\xFE\xFF\\(\\))");
  EXPECT_EQ(string(u"\u0D0A", Form::Conforming), "(\xFE\xFF\\r\\n)");
  EXPECT_EQ(string(u"\u5C5C", Form::Conforming), "(\xFE\xFF\\\\\\\\)");
}

TEST(PdfReference, WritesNumberAndGeneration) {
  EXPECT_EQ(reference(3, 2), "3 2 R");
  EXPECT_EQ(reference(kLargest, kLargest), "4294967295 4294967295 R");
}

TEST(PdfReference, LeadsToObjectZeroWithoutATarget) {
  CPDFIndirectRef object;
  EXPECT_EQ(written(object), "0 0 R");
  EXPECT_EQ(conforming(object), "0 0 R");
}

TEST(PdfReference, UsesTheTargetsNumberAtTheTimeOfWriting) {
  CPDFName target;
  CPDFIndirectRef object(&target);
  EXPECT_EQ(written(object), "0 0 R");
  target.objectNumber = 9;
  EXPECT_EQ(written(object), "9 0 R");
}

TEST(PdfRect, WritesItsFourNumbersInOrder) {
  EXPECT_EQ(rectangle(1, 2, 3, 4), "[1 2 3 4]");
  EXPECT_EQ(rectangle(kLeast, -1, 0, kMost), "[-2147483648 -1 0 2147483647]");
  CPDFRect empty;
  EXPECT_EQ(written(empty), "[0 0 0 0]");
}

TEST(PdfDate, IsLocalTimeInClassicForm) {
  const TimeZone tokyo("JST-9");
  CPDFDate date(1578821405);
  EXPECT_EQ(written(date), "(D20200112183005Z)");
}

TEST(PdfDate, IsUtcInConformingForm) {
  const TimeZone tokyo("JST-9");
  CPDFDate date(1578821405);
  EXPECT_EQ(conforming(date), "(D:20200112093005Z)");
}

TEST(PdfDate, HasNoColonAndEndsInZ) { EXPECT_EQ(date(0), "(D19700101000000Z)"); }

TEST(PdfDate, HasTheColonInConformingForm) {
  EXPECT_EQ(date(kMorning, Form::Conforming), "(D:20200112093005Z)");
  EXPECT_EQ(date(0, Form::Conforming), "(D:19700101000000Z)");
}

TEST(PdfDate, WritesNothingForATimeWithoutADate) {
  constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(date(kNever), "");
  EXPECT_EQ(date(kNever, Form::Conforming), "");
}
