#pragma once

#include "environment.h"

#include <chrono>
#include <cstddef>
#include <initializer_list>
#include <string_view>

namespace scrivalen::command {

/// Writes messages to standard error, one line each. Writing one allocates no memory.
class Messages {
 public:
  explicit Messages(const Environment& environment);
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;
  ~Messages();

  /// Shows notes, too.
  void beVerbose() { verbose_ = true; }
  bool isVerbose() const { return verbose_; }

  /// Suppresses everything but errors.
  void beQuiet() { quiet_ = true; }
  bool isQuiet() const { return quiet_; }

  /// The number of warnings, shown or not.
  std::size_t warnings() const { return warnings_; }

  void error(std::string_view text) { error({text}); }
  /// An error of several parts, which are written one after the other.
  void error(std::initializer_list<std::string_view> parts);
  void warning(std::string_view text) { warning({text}); }
  /// A warning of several parts, which are written one after the other.
  void warning(std::initializer_list<std::string_view> parts);

  /// What the command does, in several parts; shown only if wanted.
  void note(std::initializer_list<std::string_view> parts);

  /// Shows progress, on a terminal only, at most ten times a second.
  void progress(std::string_view text);

 private:
  void line(std::string_view colour, std::string_view kind, std::initializer_list<std::string_view> parts);
  void clearProgress();

  const Environment& environment_;
  bool quiet_ = false;
  bool verbose_ = false;
  bool coloured_;
  bool progressShown_ = false;
  std::size_t warnings_ = 0;
  std::chrono::steady_clock::time_point lastProgress_;
};

}  // namespace scrivalen::command
