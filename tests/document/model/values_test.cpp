#include "document/model/values.h"

#include "support/decimal_comma.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace scrivalen::document {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kGreatest = std::numeric_limits<std::int64_t>::max();

Values valuesIn(std::string_view sample, std::string_view dates = "yyyy-mm-dd") {
  return Values(NumberStyle::of(sample).value(), DateStyle::of(dates).value());
}

Values plain() { return valuesIn("1234.5"); }

ValueFormat pattern(std::string_view text) { return ValueFormat::of(text).value(); }

// Each writes into a buffer of the longest size that a caller has to give, so that the sanitizers see more.
std::string number(double value, const ValueFormat& format = ValueFormat(), const Values& values = plain()) {
  std::string out(Values::kLongest, '\0');
  out.resize(static_cast<std::size_t>(values.number(out.data(), value, format) - out.data()));
  return out;
}

std::string integer(std::int64_t value, const ValueFormat& format = ValueFormat(), const Values& values = plain()) {
  std::string out(Values::kLongest, '\0');
  out.resize(static_cast<std::size_t>(values.integer(out.data(), value, format) - out.data()));
  return out;
}

std::string date(std::int32_t days, const ValueFormat& format = ValueFormat(), const Values& values = plain()) {
  std::string out(Values::kLongest, '\0');
  out.resize(static_cast<std::size_t>(values.date(out.data(), days, format) - out.data()));
  return out;
}

std::string time(std::int64_t seconds, const ValueFormat& format = ValueFormat(), const Values& values = plain()) {
  std::string out(Values::kLongest, '\0');
  out.resize(static_cast<std::size_t>(values.time(out.data(), seconds, format) - out.data()));
  return out;
}

TEST(Numbers, AreShortest) {
  EXPECT_EQ(number(0), "0");
  EXPECT_EQ(number(1), "1");
  EXPECT_EQ(number(-1), "-1");
  EXPECT_EQ(number(0.1), "0.1");
  EXPECT_EQ(number(-0.25), "-0.25");
  EXPECT_EQ(number(1234.5), "1234.5");
  EXPECT_EQ(number(1234.56), "1234.56");
  EXPECT_EQ(number(19.99), "19.99");
  EXPECT_EQ(number(1e15), "1000000000000000");
  EXPECT_EQ(number(0.3), "0.3");
  EXPECT_EQ(number(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(number(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(number(0.000001), "0.000001");
  EXPECT_EQ(number(0.0000123), "0.0000123");
  EXPECT_EQ(number(9007199254740993.0), "9007199254740992");
  EXPECT_EQ(number(999999999999999.9), "999999999999999.9");
}

TEST(Numbers, HaveAnExponentWhereTheyWouldHaveManyZeros) {
  EXPECT_EQ(number(1e20), "100000000000000000000");
  EXPECT_EQ(number(1e21), "1e+21");
  EXPECT_EQ(number(-1e300), "-1e+300");
  EXPECT_EQ(number(1e-7), "0.0000001");
  EXPECT_EQ(number(9.9e-8), "9.9e-08");
  EXPECT_EQ(number(5e-324), "5e-324");
  EXPECT_EQ(number(1.5e300, {}, valuesIn("1.234,5")), "1,5e+300");
}

TEST(Numbers, NeverShowAMinusBeforeZero) {
  EXPECT_EQ(number(-0.0), "0");
  EXPECT_EQ(number(-0.0, ValueFormat(2)), "0.00");
  EXPECT_EQ(number(-0.001, ValueFormat(2)), "0.00");
  EXPECT_EQ(number(-5e-324, ValueFormat(15)), "0.000000000000000");
  EXPECT_EQ(number(-0.4, ValueFormat(-1)), "0");
  EXPECT_EQ(number(-0.004, pattern("0%")), "0%");
  EXPECT_EQ(number(-0.005, ValueFormat(2)), "-0.01");  // it is a little more than half
}

TEST(Numbers, ThatAreNotFiniteAreEmpty) {
  EXPECT_EQ(number(kInfinity), "");
  EXPECT_EQ(number(-kInfinity, ValueFormat(2)), "");
  EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN(), pattern("0%")), "");
}

TEST(Numbers, AreRoundedHalfToEven) {
  EXPECT_EQ(number(0.125, ValueFormat(2)), "0.12");
  EXPECT_EQ(number(0.375, ValueFormat(2)), "0.38");
  EXPECT_EQ(number(0.5, ValueFormat(-1)), "0");
  EXPECT_EQ(number(1.5, ValueFormat(-1)), "2");
  EXPECT_EQ(number(2.5, ValueFormat(-1)), "2");
  EXPECT_EQ(number(-2.5, ValueFormat(-1)), "-2");
  EXPECT_EQ(number(0.0625, ValueFormat(3)), "0.062");
}

TEST(Numbers, AreRoundedByTheirExactBinaryValue) {
  EXPECT_EQ(number(1.005, ValueFormat(2)), "1.00");  // 1.00499999999999989...
  EXPECT_EQ(number(2.675, ValueFormat(2)), "2.67");  // 2.67499999999999982...
  EXPECT_EQ(number(1.115, ValueFormat(2)), "1.11");  // 1.11499999999999999...
  EXPECT_EQ(number(8.325, ValueFormat(2)), "8.32");  // 8.32499999999999928...
  EXPECT_EQ(number(0.045, ValueFormat(2)), "0.04");  // 0.04499999999999999...
  EXPECT_EQ(number(1.45, ValueFormat(1)), "1.4");    // 1.44999999999999995...
  EXPECT_EQ(number(1.55, ValueFormat(1)), "1.6");    // 1.55000000000000004...
}

TEST(Numbers, HaveTheDecimalsOfTheirColumn) {
  EXPECT_EQ(number(1, ValueFormat(2)), "1.00");
  EXPECT_EQ(number(0.05, ValueFormat(1)), "0.1");
  EXPECT_EQ(number(9.999, ValueFormat(2)), "10.00");
  EXPECT_EQ(number(0.001, ValueFormat(2)), "0.00");
  EXPECT_EQ(number(0.1, ValueFormat(15)), "0.100000000000000");
  EXPECT_EQ(number(1e22, ValueFormat(1)), "10000000000000000000000.0");
  EXPECT_EQ(number(123456789012345.678, ValueFormat(2)), "123456789012345.67");
}

TEST(Numbers, OfTheGreatestSizeAreWrittenInFull) {
  const std::string digits = number(std::numeric_limits<double>::max(), ValueFormat(-1));
  EXPECT_EQ(digits.size(), 309u);
  EXPECT_EQ(digits.substr(0, 20), "17976931348623157081");
  // 311 digits with two more for the percentage, 103 separators of two bytes, the sign, point, decimals and percent.
  const std::string longest =
      number(-std::numeric_limits<double>::max(), pattern("#,##0.000000000000000%"), valuesIn("1 234,5"));
  EXPECT_EQ(longest.size(), 311u + 103 * 2 + 1 + 1 + 15 + 1);
  EXPECT_LE(longest.size(), Values::kLongest);
  EXPECT_EQ(longest.substr(0, 15), "-17\u00A0976\u00A0931\u00A0");
  EXPECT_EQ(longest.substr(longest.size() - 22), "\u00A0800,000000000000000%");
}

TEST(Numbers, AreGroupedInThrees) {
  const Values values = valuesIn("1,234.5");
  EXPECT_EQ(number(1, {}, values), "1");
  EXPECT_EQ(number(999, {}, values), "999");
  EXPECT_EQ(number(1000, {}, values), "1,000");
  EXPECT_EQ(number(-1234567.25, {}, values), "-1,234,567.25");
  EXPECT_EQ(number(1234.56789, {}, values), "1,234.56789");
  EXPECT_EQ(number(999999.999, ValueFormat(2), values), "1,000,000.00");
  EXPECT_EQ(integer(1234567, {}, values), "1,234,567");
}

TEST(Numbers, HaveTheSeparatorsOfTheirStyle) {
  EXPECT_EQ(number(1234567.5, {}, valuesIn("1.234,5")), "1.234.567,5");
  EXPECT_EQ(number(1234567.5, {}, valuesIn("1 234,5")), "1\u00A0234\u00A0567,5");
  EXPECT_EQ(NumberStyle::of("1 234,5")->group, "\u00A0");
  for (const char* sample : {"", "1234,5", "1'234.5", "1.234.5", "1,234.50", " 1234.5"}) {
    EXPECT_FALSE(NumberStyle::of(sample).has_value()) << sample;
  }
}

TEST(Numbers, AreTheSameInEveryLocale) {
  const test::DecimalComma locale;
  EXPECT_EQ(number(1234.5), "1234.5");
  EXPECT_EQ(number(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(number(0.125, ValueFormat(2)), "0.12");
}

TEST(Numbers, FollowAPatternRatherThanTheirStyle) {
  EXPECT_EQ(number(1234.5, pattern("0")), "1234");
  EXPECT_EQ(number(1234.5, pattern("0.00"), valuesIn("1,234.5")), "1234.50");
  EXPECT_EQ(number(1234.5, pattern("#,##0.00")), "1,234.50");
  EXPECT_EQ(number(1234.5, pattern("#,##0.00"), valuesIn("1.234,5")), "1.234,50");
  EXPECT_EQ(number(1234.5, pattern("#,##0")), "1,234");
  EXPECT_EQ(number(1234.5, pattern("yyyy-mm"), valuesIn("1,234.5")), "1,234.5");
}

TEST(Percentages, ShowAHundredfold) {
  EXPECT_EQ(number(0.5, pattern("0%")), "50%");
  EXPECT_EQ(number(1, pattern("0.0%")), "100.0%");
  EXPECT_EQ(number(-0.1234, pattern("0.0%")), "-12.3%");
  EXPECT_EQ(number(0, pattern("0.00%")), "0.00%");
  EXPECT_EQ(number(0.001, pattern("0.0%")), "0.1%");
  EXPECT_EQ(number(123.4, pattern("#,##0%")), "12,340%");
}

TEST(Percentages, AreRoundedByTheirExactBinaryValue) {
  EXPECT_EQ(number(0.125, pattern("0%")), "12%");
  EXPECT_EQ(number(0.375, pattern("0%")), "38%");
  EXPECT_EQ(number(0.285, pattern("0%")), "28%");  // 0.28499999999999998
  EXPECT_EQ(number(0.0003125, pattern("0.000%")), "0.031%");
  EXPECT_EQ(number(1.0 / 1024, pattern("0.00000%")), "0.09766%");
}

TEST(Integers, HaveAllTheirDigits) {
  EXPECT_EQ(integer(0), "0");
  EXPECT_EQ(integer(-7), "-7");
  EXPECT_EQ(integer(kGreatest), "9223372036854775807");
  EXPECT_EQ(integer(kLeast), "-9223372036854775808");
  EXPECT_EQ(integer(kLeast, {}, valuesIn("1.234,5")), "-9.223.372.036.854.775.808");
}

// They may be in a column with numbers that have decimals, below which their digits belong.
TEST(Integers, HaveTheDecimalsOfTheirColumn) {
  EXPECT_EQ(integer(5, ValueFormat(2)), "5.00");
  EXPECT_EQ(integer(5, ValueFormat(-1)), "5");
  EXPECT_EQ(integer(-1234, ValueFormat(1), valuesIn("1.234,5")), "-1.234,0");
  EXPECT_EQ(integer(0, ValueFormat(3)), "0.000");
  EXPECT_EQ(integer(kLeast, ValueFormat(15)), "-9223372036854775808.000000000000000");
}

TEST(Integers, HaveTheDecimalsOfAPattern) {
  EXPECT_EQ(integer(5, pattern("0.00")), "5.00");
  EXPECT_EQ(integer(-1234, pattern("#,##0.0")), "-1,234.0");
  EXPECT_EQ(integer(0, pattern("0.0%")), "0.0%");
  EXPECT_EQ(integer(-3, pattern("0.0%")), "-300.0%");
  EXPECT_EQ(integer(kLeast, pattern("0.000000000000000%")), "-922337203685477580800.000000000000000%");
  EXPECT_EQ(integer(1234, pattern("dd.mm.yyyy"), valuesIn("1,234.5")), "1,234");
}

TEST(Dates, HaveTheirPlainForm) {
  EXPECT_EQ(date(0), "1970-01-01");
  EXPECT_EQ(date(-1), "1969-12-31");
  EXPECT_EQ(date(11016), "2000-02-29");
  EXPECT_EQ(date(-25567), "1900-01-01");
  EXPECT_EQ(date(-719162), "0001-01-01");
}

TEST(Dates, ReachFarYears) {
  EXPECT_EQ(date(2932897), "10000-01-01");
  EXPECT_EQ(date(-719528), "0000-01-01");
  EXPECT_EQ(date(-719529), "-0001-12-31");
  EXPECT_EQ(date(std::numeric_limits<std::int32_t>::max()), "5881580-07-11");
  EXPECT_EQ(date(std::numeric_limits<std::int32_t>::min()), "-5877641-06-23");
}

TEST(Dates, FollowTheirStyle) {
  EXPECT_EQ(date(33, {}, valuesIn("1234.5", "dd.mm.yyyy")), "03.02.1970");
  EXPECT_EQ(date(33, {}, valuesIn("1234.5", "m/d/yyyy")), "2/3/1970");
  EXPECT_EQ(date(300, {}, valuesIn("1234.5", "d. m. yyyy")), "28. 10. 1970");
  EXPECT_EQ(date(33, {}, valuesIn("1234.5", "yyyy. mm. dd.")), "1970. 02. 03.");
}

TEST(Dates, FollowAPatternRatherThanTheirStyle) {
  EXPECT_EQ(date(33, pattern("yyyy-mm"), valuesIn("1234.5", "dd.mm.yyyy")), "1970-02");
  EXPECT_EQ(date(33, pattern("yyyy")), "1970");
  EXPECT_EQ(date(33, pattern("dd.mm.yyyy hh:mm")), "03.02.1970 00:00");
  EXPECT_EQ(date(33, pattern("0.00"), valuesIn("1234.5", "dd.mm.yyyy")), "03.02.1970");
}

TEST(Times, HaveTheirPlainForm) {
  EXPECT_EQ(time(0), "1970-01-01 00:00:00");
  EXPECT_EQ(time(-1), "1969-12-31 23:59:59");
  EXPECT_EQ(time(-86400), "1969-12-31 00:00:00");
  EXPECT_EQ(time(1'000'000'000), "2001-09-09 01:46:40");
  EXPECT_EQ(time(kGreatest), "292277026596-12-04 15:30:07");
  EXPECT_EQ(time(kLeast), "-292277022657-01-27 08:29:52");
}

TEST(Times, FollowStylesAndPatterns) {
  EXPECT_EQ(time(3723, {}, valuesIn("1234.5", "d.m.yyyy")), "1.1.1970 01:02:03");
  EXPECT_EQ(time(3723, pattern("yyyy-mm-dd hh:mm")), "1970-01-01 01:02");
  EXPECT_EQ(time(3723, pattern("hh:mm:ss")), "01:02:03");
  EXPECT_EQ(time(3723, pattern("m/d/yyyy")), "1/1/1970");
}

TEST(Booleans, AreTrueAndFalse) {
  char out[Values::kLongest];
  EXPECT_EQ(std::string(static_cast<char*>(out), Values::boolean(out, true)), "true");
  EXPECT_EQ(std::string(static_cast<char*>(out), Values::boolean(out, false)), "false");
}

TEST(DateStyles, RefuseOtherPatterns) {
  for (const char* text :
       {"", "yyyy", "yyyy-mm", "yyyy-mm-mm", "yyyymmdd", "yy-mm-dd", "YYYY-MM-DD", "yyyy-mm-dd-", "-yyyy-mm-dd",
        "yyyy---mm-dd", "yyyy-mm-ddd", "yyyy-mmm-dd", "yyyy-mm-dd hh:mm", "yyyyxmmxdd"}) {
    EXPECT_FALSE(DateStyle::of(text).has_value()) << text;
  }
}

TEST(ValueFormats, RefuseOtherPatterns) {
  for (const char* text : {"",
                           "#",
                           "#,##",
                           "00",
                           "0.",
                           ".0",
                           "0.0000000000000000",
                           "0%%",
                           "%",
                           "0.0 %",
                           "#,#00",
                           "0,000",
                           "General",
                           "@",
                           "0.00E+00",
                           "hh",
                           "hh:mm ",
                           "mm:ss",
                           "hh:mm yyyy",
                           "yyyy-mm  hh:mm",
                           "yyyy-",
                           "y",
                           "\"x\"0",
                           "0;0",
                           "[Red]0"}) {
    EXPECT_FALSE(ValueFormat::of(text).has_value()) << text;
  }
}

TEST(ValueFormats, KnowTheirPatternAndDecimals) {
  EXPECT_EQ(pattern("#,##0.00").pattern(), "#,##0.00");
  EXPECT_EQ(pattern("#,##0.00").decimals(), 2);
  EXPECT_EQ(pattern("0%").decimals(), -1);
  EXPECT_EQ(ValueFormat(3).decimals(), 3);
  EXPECT_EQ(ValueFormat().pattern(), "");
}

TEST(PlainNumbers, HaveNeitherGroupsNorLeadingZeros) {
  for (const char* text : {"0", "-0", "7", "-12", "0.5", "-0.50", "123456789012345678901234567890.1"}) {
    EXPECT_TRUE(isPlainNumber(text)) << text;
  }
  for (const char* text : {"", "-", "--1", "+1", "00", "01", "-01", ".5", "5.", "1.2.3", "1,234", "1e5", " 1", "1 ",
                           "0x1", "1.5%", "\u0661"}) {
    EXPECT_FALSE(isPlainNumber(text)) << text;
  }
}

TEST(IsoDates, AreDaysThatExist) {
  EXPECT_TRUE(isIsoDate("2024-02-29"));
  EXPECT_FALSE(isIsoDate("2023-02-29"));
  EXPECT_FALSE(isIsoDate("2024-2-29"));
}

// Any bits, of all magnitudes, from a simple generator.
class Bits {
 public:
  double next() {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    const std::uint64_t bits = state_ ^ state_ >> 29;
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }

 private:
  std::uint64_t state_ = 1;
};

TEST(Numbers, AreReadBackAsTheSame) {
  Bits bits;
  for (int i = 0; i < 20000; ++i) {
    const double value = bits.next();
    const double ordinary = std::fmod(value, 1e6);
    if (std::isfinite(value)) {
      ASSERT_EQ(std::strtod(number(value).c_str(), nullptr), value);
      ASSERT_EQ(std::strtod(number(ordinary).c_str(), nullptr), ordinary);
    }
  }
}

TEST(Numbers, WithFewDecimalsAreExactlyThose) {
  for (int scaled = -300000; scaled < 300000; scaled += 7) {
    char expected[32];
    std::snprintf(expected, sizeof expected, "%.15g", scaled / 10000.0);
    ASSERT_EQ(number(scaled / 10000.0), expected);
  }
}

TEST(Numbers, AreRoundedAsTheCLibraryRoundsThem) {
  Bits bits;
  for (int i = 0; i < 20000; ++i) {
    const double value = std::abs(std::fmod(bits.next(), 1e9)) / 1024;
    for (const int decimals : {1, 2, 3, 9}) {
      if (std::isfinite(value)) {
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.*f", decimals, value);
        ASSERT_EQ(number(value, ValueFormat(decimals)), expected) << value;
      }
    }
    const double half = std::floor(value) + 0.125;
    char expected[64];
    std::snprintf(expected, sizeof expected, "%.2f", half);
    if (std::isfinite(half)) {
      ASSERT_EQ(number(half, ValueFormat(2)), expected);
    }
  }
}

}  // namespace
}  // namespace scrivalen::document
