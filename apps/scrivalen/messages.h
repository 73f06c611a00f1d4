#pragma once

#include "environment.h"

#include <chrono>
#include <string_view>

namespace scrivalen::command {

/// What the command tells the person in front of it, on standard error, one line a message. To show one needs no
/// memory.
class Messages {
 public:
  explicit Messages(const Environment& environment);
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;
  ~Messages();

  /// Keeps everything but errors to itself.
  void beQuiet() { quiet_ = true; }

  void error(std::string_view text);
  void warning(std::string_view text);

  /// Shows how far the command is, on a terminal only, at most ten times a second.
  void progress(std::string_view text);

 private:
  void line(std::string_view colour, std::string_view kind, std::string_view text);
  void clearProgress();

  const Environment& environment_;
  bool quiet_ = false;
  bool coloured_;
  bool progressShown_ = false;
  std::chrono::steady_clock::time_point lastProgress_;
};

}  // namespace scrivalen::command
