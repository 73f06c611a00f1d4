#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// The objects of PDF as text (PDF 1.7, 7.3).
namespace scrivalen::typeset {

void appendInteger(std::string& out, std::int64_t value);
/// A number in thousandths, without trailing zeros.
void appendThousandths(std::string& out, std::int64_t value);
/// The bytes of a string, with the characters escaped that have to be.
void appendEscaped(std::string& out, std::string_view bytes);
/// A string of bytes in parentheses.
void appendString(std::string& out, std::string_view bytes);
/// A text for people: ASCII as it is, any other as UTF-16 with a mark (7.9.2.2).
void appendText(std::string& out, std::string_view utf8);
/// The last digits of a number in hexadecimal.
void appendHex(std::string& out, std::uint64_t value, int digits);
/// A name, without its slash in @p name.
void appendName(std::string& out, std::string_view name);
void appendReference(std::string& out, int number);
/// A date in UTC. @param time  seconds since 1970-01-01
void appendDate(std::string& out, std::int64_t time);

}  // namespace scrivalen::typeset
