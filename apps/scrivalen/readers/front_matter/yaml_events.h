#pragma once

#include <yaml.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// A text that is no YAML. The message is a part of a sentence and names no line.
class YamlError : public std::runtime_error {
 public:
  YamlError(std::size_t line, const std::string& reason) : std::runtime_error(reason), line_(line) {}

  std::size_t line() const { return line_; }  ///< from 1

 private:
  std::size_t line_;
};

/// Reads YAML 1.1 event by event, so that nothing is built of it and no alias is expanded.
class YamlEvents {
 public:
  /// @param text  UTF-8; must outlive this object
  explicit YamlEvents(std::string_view text);
  YamlEvents(const YamlEvents&) = delete;
  YamlEvents& operator=(const YamlEvents&) = delete;
  ~YamlEvents();

  /// The next event, valid until the next call. Raises YamlError, also for lists and mappings that are too deep in each
  /// other. Not to be called after YAML_STREAM_END_EVENT.
  const yaml_event_t& next();

  /// The line, from 1, in which the last event begins.
  std::size_t line() const { return event_.start_mark.line + 1; }

 private:
  void releaseEvent();
  [[noreturn]] void fail() const;

  std::string_view text_;
  yaml_parser_t parser_;
  yaml_event_t event_{};
  int depth_ = 0;
};

}  // namespace scrivalen::command
