#include "document/model/writer.h"
#include "formats/pdf/typeset/file/pdf_file.h"
#include "formats/pdf/typeset/text/paragraph.h"
#include "input.h"
#include "output/host_handlers.h"
#include "output/output_buffer.h"
#include "support/pdf/pdf_file_reader.h"
#include "system/files/files.h"
#include "text/utf.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using scrivalen::fuzz::Input;
using scrivalen::test::PdfFileReader;

// Sets a text in a font of a host and writes both into a PDF. If the first byte is odd, the others are the font's file.
// Else they choose a font of the library and break some of its bytes: by chance, hardly any file would be a font.
namespace scrivalen::typeset {
namespace {

constexpr std::string_view kFonts[] = {"LiberationSans-Regular.ttf", "LiberationMono-Bold.ttf",
                                       "LiberationSerif-Italic.ttf", "DejaVuSans.ttf"};

// Ligatures, kerning, marks, and scripts whose letters take many forms.
constexpr std::string_view kText =
    "Avatar office AVATAR 1/2 \u00E9 e\u0301\u0323 x\u0308 \u03B1\u0301 \u0416\u0438\n"
    "\u0633\u0644\u0627\u0645 \u0644\u0644\u0647 \u05E9\u05C1\u05B8\u05DC\u05D5\u05B9\u05DD \u0915\u094D\u0937\u093F "
    "\u0E01\u0E33 \u1780\u17D2\u1780 \u1102\u1161\u11A8 \u6F22 \U0001F468\u200D\U0001F469";

struct MemorySink : ByteSink {
  bool take(const char* data, std::size_t size) override {
    bytes.append(data, size);
    return true;
  }
  std::string bytes;
};

void require(bool good, const char* problem) {
  if (!good) {
    std::fprintf(stderr, "%s\n", problem);
    std::abort();
  }
}

std::string bundledFont(std::string_view name) {
  std::wstring path(folderOf(homePath()));
  path.append(L"fonts").append(1, kPathSeparator).append(toWide(name));
  std::string bytes;
  const File file = openForReading(path);
  require(file && readRest(file,
                           [&bytes](std::string_view part) {
                             bytes += part;
                             return true;
                           }),
          "no font of the library");
  return bytes;
}

// Each place is that of a table and an offset into it, so that small tables are broken as often as large ones.
std::string brokenFont(Input& input) {
  static const std::vector<std::string> kWhole = [] {
    std::vector<std::string> fonts;
    for (const std::string_view name : kFonts) {
      fonts.push_back(bundledFont(name));
    }
    return fonts;
  }();
  std::string font = kWhole[static_cast<std::size_t>(input.byte()) % kWhole.size()];
  const auto four = [&font](std::size_t at) {
    std::size_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      number = number << 8 | static_cast<unsigned char>(font[at + i]);
    }
    return number;
  };
  const std::size_t tables = four(4) >> 16;
  while (!input.empty()) {
    const std::size_t table = static_cast<std::size_t>(input.byte()) % (tables + 1);
    const std::size_t offset = static_cast<std::size_t>(input.byte()) << 8 | static_cast<std::size_t>(input.byte());
    const std::size_t begin = table < tables ? four(12 + 16 * table + 8) : 12;
    const std::size_t size = table < tables ? four(12 + 16 * table + 12) : 16 * tables;
    const std::size_t place = begin + offset % (size + 1);
    if (place < font.size()) {
      font[place] = static_cast<char>(static_cast<unsigned char>(input.byte()));
    }
  }
  return font;
}

void draw(std::unique_ptr<FontFile> font) {
  std::vector<std::unique_ptr<FontFile>> files;
  files.push_back(std::move(font));
  FontSet fonts(std::move(files));
  Shaper shaper(fonts);
  TextStyle style;
  style.font = 4 * (static_cast<FontId>(Family::DejaVu) + 1);  // the host's
  style.size = 10 * kPoint;
  StyledText text;
  text.add(kText, style);
  for (const bool isKerned : {false, true}) {
    const SetText set =
        setText(text, {.width = 200 * kPoint, .leading = 1300, .usual = style, .isKerned = isKerned}, shaper);
    require(set.lines.size() >= 2, "a line is lost");
  }
  MemorySink sink;
  OutputBuffer out(sink);
  PdfFile file(out);
  file.begin();
  std::string resources;
  try {
    fonts.write(file, resources);
  } catch (const document::OutputFailure&) {
    return;
  }
  const int catalog = file.newNumber();
  file.writeObject(catalog, "<</Type/Catalog>>");
  const int information = file.newNumber();
  file.writeObject(information, resources);
  file.finish({catalog, information});
  out.flush();
  const PdfFileReader reader(sink.bytes);
  for (const std::string& problem : reader.problems()) {
    require(false, problem.c_str());
  }
}

}  // namespace
}  // namespace scrivalen::typeset

extern "C" int LLVMFuzzerInitialize(int*, char***) { return 0; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivalen::typeset;
  if (size == 0) {
    return 0;
  }
  Input input(data + 1, size - 1);
  const std::string bytes =
      (data[0] & 1) != 0 ? std::string(reinterpret_cast<const char*>(data) + 1, size - 1) : brokenFont(input);
  const unsigned index = (data[0] & 2) != 0 ? 1 : 0;
  std::string reason;
  auto font = FontFile::read(bytes, index, reason);
  require((font == nullptr) == !reason.empty(), "a font and a reason");
  if (font) {
    draw(std::move(font));
  }
  return 0;
}
