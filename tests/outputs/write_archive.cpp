// Writes an archive of entries of every kind to a file. The contents are such that a script can make them too.
#include "output/archive/zip_writer.h"

#include <cstdio>
#include <fstream>
#include <string>

namespace {

class FileSink : public scrivalen::ByteSink {
 public:
  explicit FileSink(const char* file) : file_(file, std::ios::binary) {}

 private:
  bool take(const char* data, std::size_t size) override {
    return static_cast<bool>(file_.write(data, static_cast<std::streamsize>(size)));
  }

  std::ofstream file_;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: scrivalen_write_archive ENTRIES FILE\n", stderr);
    return 2;
  }
  FileSink sink(argv[2]);
  scrivalen::OutputBuffer out(sink);
  scrivalen::ZipWriter zip(out, 1'732'881'600);
  zip.addEntry("first.txt", "the first\n");
  zip.beginEntry("folder/stream.txt");
  for (int i = 0; i < 1'000'000; ++i) {
    zip.write(std::to_string(i) + "\n");
  }
  zip.endEntry();
  zip.beginEntry("empty");
  zip.endEntry();
  zip.addStored("\xC3\xA4\xE2\x82\xAC.bin", std::string("\0\1\2", 3));
  for (int i = 0, count = std::stoi(argv[1]); i < count; ++i) {
    zip.addStored("many/" + std::to_string(i), "");
  }
  zip.finish();
  return out.flush() ? 0 : 1;
}
