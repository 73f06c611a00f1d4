#pragma once

namespace scrivalen::document {

/// What a call returns; the values of the C interface.
enum class Status : int {
  Ok = 0,
  FileError = 1,
  TemplateNotFound = 2,
  OutOfMemory = 3,
  Misuse = 4,
  UnknownFormat = 5,
  UnknownSetting = 6,
  Cancelled = 7,
  InputError = 8
};

}  // namespace scrivalen::document
