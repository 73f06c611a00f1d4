#pragma once

#include "formats/markdown/lines.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::markdown {

/// Writes code between fences that no line of it ends. The fences are as long as the first 64 KiB need; should a later
/// line end them, the code is divided there.
class CodeBlock {
 public:
  /// @param out, lines  not owned; must outlive this object
  CodeBlock(OutputBuffer& out, Lines& lines) : out_(out), lines_(lines) {}

  void begin(std::string_view language);
  void text(std::string_view text);
  void end();

 private:
  void writeLines();
  void writeLine(std::string_view line);
  void openFence();
  void closeFence();
  std::size_t fenceIn(std::string_view line) const;
  void write(std::string_view text) { out_.write(text.data(), text.size()); }

  OutputBuffer& out_;
  Lines& lines_;
  std::string language_;
  std::string code_;  // what is not written yet
  std::string fence_;
  char mark_ = '`';
  bool isOpen_ = false;
};

}  // namespace scrivalen::markdown
