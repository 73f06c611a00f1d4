#pragma once

#include <exception>
#include <stdexcept>
#include <string>

namespace scrivalen::command {

/// The input cannot be read to its end; the message is UTF-8, one line, and names the place where it can.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The command was called in a way it does not understand; the message is UTF-8 and one line.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// There is no output left to write to; each one knows why.
class NoOutputLeft : public std::exception {};

/// The person at the keyboard has seen enough.
class Interrupted : public std::exception {};

}  // namespace scrivalen::command
