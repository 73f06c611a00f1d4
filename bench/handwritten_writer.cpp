#include "ledger.h"
#include "writers.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>

namespace scrivalen::bench {
namespace {

constexpr std::size_t kBufferSize = 65536;
constexpr std::size_t kCellSize = 4096;  // bytes of a cell collected before they are written
constexpr std::size_t kLongest = 6;      // bytes of the longest escape

void put(const char* text, std::FILE* out) { std::fputs(text, out); }

char* putUtf8(char32_t c, char* out) {
  if (c < 0x80) {
    *out++ = static_cast<char>(c);
  } else if (c < 0x800) {
    *out++ = static_cast<char>(0xC0 | (c >> 6));
    *out++ = static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    *out++ = static_cast<char>(0xE0 | (c >> 12));
    *out++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    *out++ = static_cast<char>(0x80 | (c & 0x3F));
  } else {
    *out++ = static_cast<char>(0xF0 | (c >> 18));
    *out++ = static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    *out++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    *out++ = static_cast<char>(0x80 | (c & 0x3F));
  }
  return out;
}

char* putEscape(const char* text, std::size_t size, char* out) {
  std::memcpy(out, text, size);
  return out + size;
}

struct HtmlEscaper {
  static char* put(wchar_t c, char* out) {
    switch (c) {
      case L'&': return putEscape("&amp;", 5, out);
      case L'<': return putEscape("&lt;", 4, out);
      case L'>': return putEscape("&gt;", 4, out);
      case L'"': return putEscape("&quot;", 6, out);
      default: return putUtf8(static_cast<char32_t>(c), out);
    }
  }
};

struct XmlEscaper {
  static char* put(wchar_t c, char* out) {
    switch (c) {
      case L'&': return putEscape("&amp;", 5, out);
      case L'<': return putEscape("&lt;", 4, out);
      default: return putUtf8(static_cast<char32_t>(c), out);
    }
  }
};

// The ledger has no other letters. A report with the typographic signs of the code page would need a table for them.
struct RtfEncoder {
  static char* put(wchar_t c, char* out) {
    const auto number = static_cast<char32_t>(c);
    *out++ = number < 0x80 || (number >= 0xA0 && number <= 0xFF) ? static_cast<char>(number) : '?';
    return out;
  }
};

struct Utf16Encoder {
  static char* put(wchar_t c, char* out) {
    const auto number = static_cast<char32_t>(c);
    if (number < 0x10000) {
      return putUnit(number, out);
    }
    out = putUnit(0xD800 + ((number - 0x10000) >> 10), out);
    return putUnit(0xDC00 + ((number - 0x10000) & 0x3FF), out);
  }

  static char* putUnit(char32_t unit, char* out) {
    out[0] = static_cast<char>(unit & 0xFF);
    out[1] = static_cast<char>(unit >> 8 & 0xFF);
    return out + 2;
  }
};

template <typename Encoder>
void putText(const wchar_t* text, std::FILE* out) {
  char bytes[kCellSize];
  char* at = bytes;
  for (; *text != 0; ++text) {
    if (at > bytes + kCellSize - kLongest) {
      std::fwrite(bytes, 1, static_cast<std::size_t>(at - bytes), out);
      at = bytes;
    }
    at = Encoder::put(*text, at);
  }
  std::fwrite(bytes, 1, static_cast<std::size_t>(at - bytes), out);
}

void writeHtml(long rows, std::FILE* out) {
  put("<h1>", out);
  putText<HtmlEscaper>(kTitle, out);
  put("</h1><table class=\"table table-hover table-bordered\">", out);
  Ledger ledger;
  for (long i = 0; i < rows; ++i) {
    put("<tr>", out);
    for (const wchar_t* text : ledger.next()) {
      put("<td>", out);
      putText<HtmlEscaper>(text, out);
      put("</td>", out);
    }
    put("</tr>", out);
  }
  put("</table></body></html>\n", out);
}

void writeXml(long rows, std::FILE* out) {
  put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report><text>", out);
  putText<XmlEscaper>(kTitle, out);
  put("</text><ledger>", out);
  Ledger ledger;
  for (long i = 0; i < rows; ++i) {
    put("<row>", out);
    for (const wchar_t* text : ledger.next()) {
      put("<cell>", out);
      putText<XmlEscaper>(text, out);
      put("</cell>", out);
    }
    put("</row>", out);
  }
  put("</ledger></report>", out);
}

void writeText(long rows, std::FILE* out) {
  constexpr char kTab[] = {'\t', 0};
  constexpr char kLineEnd[] = {'\r', 0, '\n', 0};
  putText<Utf16Encoder>(L"\uFEFF", out);
  putText<Utf16Encoder>(kTitle, out);
  std::fwrite(kLineEnd, 1, sizeof kLineEnd, out);
  Ledger ledger;
  for (long i = 0; i < rows; ++i) {
    bool first = true;
    for (const wchar_t* text : ledger.next()) {
      if (!first) {
        std::fwrite(kTab, 1, sizeof kTab, out);
      }
      first = false;
      putText<Utf16Encoder>(text, out);
    }
    std::fwrite(kLineEnd, 1, sizeof kLineEnd, out);
  }
}

void beginRtfRow(int columns, std::FILE* out) {
  put("{\\trowd\\trgaph108\\trwWidth5000\\trftsWidth2"
      "\\trbrdrt\\brdrs\\brdrw10 \\trbrdrl\\brdrs\\brdrw10 \\trbrdrb\\brdrs\\brdrw10 "
      "\\trbrdrr\\brdrs\\brdrw10 \\trbrdrh\\brdrs\\brdrw10 \\trbrdrv\\brdrs\\brdrw10\r\n",
      out);
  for (int column = 1; column <= columns; ++column) {
    put("\\clbrdrt\\brdrs\\brdrw10 \\clbrdrl\\brdrs\\brdrw10 \\clbrdrb\\brdrs\\brdrw10 "
        "\\clbrdrr\\brdrs\\brdrw10 \\cltxlrtb \r\n\\cellx",
        out);
    char twips[16];
    const char* const end = std::to_chars(twips, twips + sizeof twips, column * 1000).ptr;
    std::fwrite(twips, 1, static_cast<std::size_t>(end - twips), out);
  }
  put("\\nowidctlpar\\widctlpar\\adjustright\r\n", out);
}

void writeRtf(long rows, std::FILE* out) {
  put("{\\rtf\\ansi{\\info{\\title Report}} \r\n"
      "{\\colortbl;\\red0\\green0\\blue0;\\red0\\green0\\blue255;\\red0\\green255\\blue255;\\red0\\green255\\blue0;"
      "\\red255\\green0\\blue255;\\red255\\green0\\blue0;\\red255\\green255\\blue0;\\red255\\green255\\blue255;"
      "\\red0\\green0\\blue128;\\red0\\green128\\blue128;\\red0\\green128\\blue0;\\red128\\green0\\blue128;"
      "\\red128\\green0\\blue0;\\red128\\green128\\blue0;\\red128\\green128\\blue128;\\red192\\green192\\blue192;}"
      "\\paperw11906\\paperh16838\r\n{",
      out);
  putText<RtfEncoder>(kTitle, out);
  put("\\s1\\ql\\par\\pard\\plain \\par ", out);
  Ledger ledger;
  for (long i = 0; i < rows; ++i) {
    beginRtfRow(static_cast<int>(kColumns), out);
    for (const wchar_t* text : ledger.next()) {
      put("\\intbl ", out);
      putText<RtfEncoder>(text, out);
      put("\\cell \r\n", out);
    }
    put("\\pard \\nowidctlpar\\widctlpar\\adjustright\\row\\pard}\r\n", out);
  }
  put("}}", out);
}

std::string failure(const char* what, const std::string& file) {
  return std::string(what) + " " + file + ": " + std::strerror(errno);
}

}  // namespace

std::string writeByHand(Format format, long rows, const std::string& file) {
  std::FILE* const out = std::fopen(file.c_str(), "wb");
  if (!out) {
    return failure("cannot open", file);
  }
  const auto buffer = std::make_unique<char[]>(kBufferSize);  // glibc takes the size only together with a buffer
  std::setvbuf(out, buffer.get(), _IOFBF, kBufferSize);
  switch (format) {
    case Format::Text: writeText(rows, out); break;
    case Format::Html: writeHtml(rows, out); break;
    case Format::Xml: writeXml(rows, out); break;
    case Format::Rtf: writeRtf(rows, out); break;
    case Format::Pdf: std::fclose(out); return "there is no PDF writer by hand";
    case Format::Xlsx: std::fclose(out); return "there is no xlsx writer by hand";
  }
  const bool written = std::ferror(out) == 0;
  return std::fclose(out) == 0 && written ? std::string() : failure("cannot write", file);
}

}  // namespace scrivalen::bench
