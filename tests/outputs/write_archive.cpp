// Writes an archive of entries of every kind to a file. The contents are such that a script can make them too.
#include "output/archive/zip_writer.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>

namespace {

// Leaves blocks of zeros out, as a hole in the file.
class FileSink : public scrivalen::ByteSink {
 public:
  explicit FileSink(const char* file) : file_(file, std::ios::binary) {}

 private:
  bool take(const char* data, std::size_t size) override {
    const auto length = static_cast<std::streamsize>(size);
    if (std::all_of(data, data + size, [](char c) { return c == 0; })) {
      return static_cast<bool>(file_.seekp(length, std::ios::cur));
    }
    return static_cast<bool>(file_.write(data, length));
  }

  std::ofstream file_;
};

void addStream(scrivalen::ZipWriter& zip, std::string_view name, std::string_view content) {
  zip.beginEntry(name);
  zip.write(content);
  zip.endEntry();
}

void addManyLines(scrivalen::ZipWriter& zip) {
  zip.beginEntry("folder/stream.txt");
  for (int i = 0; i < 1'000'000; ++i) {
    zip.write(std::to_string(i) + "\n");
  }
  zip.endEntry();
}

void addBlocks(scrivalen::ZipWriter& zip, int count) {
  const std::string zeros(std::size_t{1} << 26, '\0');
  for (int i = 0; i < count; ++i) {
    zip.addStored("blocks/" + std::to_string(i), zeros);
  }
  zip.addEntry("last.txt", "the last\n");
  addStream(zip, "last/stream.txt", "streamed\n");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: scrivalen_write_archive ENTRIES BLOCKS FILE\n", stderr);
    return 2;
  }
  FileSink sink(argv[3]);
  scrivalen::OutputBuffer out(sink);
  scrivalen::ZipWriter zip(out, 1'732'881'600);
  zip.addEntry("first.txt", "the first\n");
  addManyLines(zip);
  addStream(zip, "empty", "");
  zip.addStored("\xC3\xA4\xE2\x82\xAC.bin", std::string("\0\1\2", 3));
  for (int i = 0, count = std::stoi(argv[1]); i < count; ++i) {
    zip.addStored("many/" + std::to_string(i), "");
  }
  if (const int blocks = std::stoi(argv[2]); blocks > 0) {
    addBlocks(zip, blocks);
  }
  zip.finish();
  return out.flush() ? 0 : 1;
}
