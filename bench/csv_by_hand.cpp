// Writes a table of separated values as HTML, as a program for this one table would: it knows which columns hold
// numbers and dates, and gets the page around the rows from a file.
#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

namespace {

constexpr const char* kUsage =
    "usage: scrivalen_csv_by_hand INPUT PAGE OUTPUT\n"
    "  INPUT   a table like that of bench/compare.sh: id, name, remark, amount, date, status\n"
    "  PAGE    what the command makes of a table with this header\n";

constexpr std::size_t kBufferSize = 65536;

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

File open(const char* name, const char* mode, char* buffer) {
  File file(std::fopen(name, mode));
  if (file) {
    std::setvbuf(file.get(), buffer, _IOFBF, kBufferSize);
  }
  return file;
}

// Reads a cell. @return the character that ended it: a comma, a line feed or EOF
int readCell(std::FILE* in, std::string& cell) {
  cell.clear();
  int c = getc_unlocked(in);
  if (c != '"') {
    for (; c != ',' && c != '\n' && c != EOF; c = getc_unlocked(in)) {
      cell += static_cast<char>(c);
    }
    return c;
  }
  for (c = getc_unlocked(in); c != EOF; c = getc_unlocked(in)) {
    if (c == '"' && (c = getc_unlocked(in)) != '"') {
      return c;
    }
    cell += static_cast<char>(c);
  }
  return EOF;
}

void putMarkup(std::string_view text, std::FILE* out) {
  for (const char c : text) {
    switch (c) {
      case '&': fputs_unlocked("&amp;", out); break;
      case '<': fputs_unlocked("&lt;", out); break;
      case '>': fputs_unlocked("&gt;", out); break;
      default: putc_unlocked(c, out);
    }
  }
}

void writeRows(std::FILE* in, std::FILE* out) {
  constexpr const char* kNumber = "<td style=\"text-align:right\">";
  constexpr std::array<const char*, 6> kTags = {kNumber, "<td>", "<td>", kNumber, "<td class=\"date\">", "<td>"};
  std::string cell;
  while (readCell(in, cell) == ',') {
  }
  for (int end = readCell(in, cell); end == ','; end = readCell(in, cell)) {
    fputs_unlocked("<tr>", out);
    for (const char* const tag : kTags) {
      fputs_unlocked(tag, out);
      putMarkup(cell, out);
      fputs_unlocked("</td>", out);
      if (end == ',') {
        end = readCell(in, cell);
      }
    }
    fputs_unlocked("</tr>\n", out);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  static std::array<std::array<char, kBufferSize>, 2> buffers;
  const File in = open(argv[1], "rb", buffers[0].data());
  const File out = open(argv[3], "wb", buffers[1].data());
  std::ifstream file(argv[2], std::ios::binary);
  const std::string page(std::istreambuf_iterator<char>(file), {});
  const std::size_t begin = page.find("<tbody>\n");
  const std::size_t end = page.find("</tbody>");
  if (!in || !out || end == std::string::npos) {
    std::fputs("cannot read the input or the page, or cannot write the output\n", stderr);
    return 1;
  }
  std::fwrite(page.data(), 1, begin + std::strlen("<tbody>\n"), out.get());
  writeRows(in.get(), out.get());
  std::fwrite(page.data() + end, 1, page.size() - end, out.get());
  return std::fflush(out.get()) == 0 && std::ferror(out.get()) == 0 ? 0 : 1;
}
