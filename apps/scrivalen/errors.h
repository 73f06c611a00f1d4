#pragma once

#include <exception>
#include <stdexcept>
#include <string>

namespace scrivalen::command {

/// An input cannot be read completely. The message is one line of UTF-8 and names the place if it is known.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The command line or the environment is invalid. The message is one line of UTF-8.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Every output has failed; each one keeps its own error.
class NoOutputLeft : public std::exception {};

/// The user interrupted the run.
class Interrupted : public std::exception {};

}  // namespace scrivalen::command
