#include "pages/completions.h"
#include "pages/man_page.h"
#include "system/console.h"
#include "system/files/files.h"

#include <string>
#include <string_view>

// Writes the manual or a completion script of the command to a file. The build installs them.

namespace {

bool write(const std::string& path, const std::string& text) {
  scrivalen::File file = scrivalen::openExclusive(scrivalen::widePath(path));
  return file && scrivalen::writeAll(file, text.data(), text.size()) && file.close();
}

}  // namespace

int main(int argc, char** argv) {
  namespace command = scrivalen::command;
  struct Page {
    std::string_view name;
    std::string (*make)();
  };
  static constexpr Page kPages[] = {{"man", &command::manPage},
                                    {"bash", &command::bashCompletion},
                                    {"zsh", &command::zshCompletion},
                                    {"fish", &command::fishCompletion}};
  const std::string_view wanted = argc == 3 ? argv[1] : "";
  for (const Page& page : kPages) {
    if (page.name == wanted) {
      return write(argv[2], page.make()) ? 0 : 1;
    }
  }
  scrivalen::writeStandardError("usage: scrivalen_pages man|bash|zsh|fish FILE\n");
  return 2;
}
