#include "api/call.h"

#include <exception>
#include <new>
#include <stdexcept>

namespace scrivalen::api {
namespace {

// The C interface has the model's numbers.
static_assert(static_cast<int>(Status::Ok) == SCRIVALEN_OK);
static_assert(static_cast<int>(Status::FileError) == SCRIVALEN_FILE_ERROR);
static_assert(static_cast<int>(Status::TemplateNotFound) == SCRIVALEN_TEMPLATE_NOT_FOUND);
static_assert(static_cast<int>(Status::OutOfMemory) == SCRIVALEN_OUT_OF_MEMORY);
static_assert(static_cast<int>(Status::Misuse) == SCRIVALEN_MISUSE);
static_assert(static_cast<int>(Status::UnknownFormat) == SCRIVALEN_UNKNOWN_FORMAT);
static_assert(static_cast<int>(Status::UnknownSetting) == SCRIVALEN_UNKNOWN_SETTING);
static_assert(static_cast<int>(Status::Cancelled) == SCRIVALEN_CANCELLED);
static_assert(static_cast<int>(Status::InputError) == SCRIVALEN_INPUT_ERROR);

Status misuse(Document& document, const char* reason) noexcept {
  try {
    return document.misuse(reason);
  } catch (const std::bad_alloc&) {
    return document.runOutOfMemory();
  }
}

}  // namespace

Status failed(Document& document) noexcept {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return document.runOutOfMemory();
  } catch (const std::length_error&) {
    return document.runOutOfMemory();
  } catch (const std::exception& raised) {
    return misuse(document, raised.what());
  } catch (...) {
    return misuse(document, "an unknown exception was raised");
  }
}

std::string quoted(std::string_view text) {
  std::string result = "'";
  document::Replaced replaced;
  document::appendClean(result, text, document::TextKind::Line, replaced);
  return result += "'";
}

}  // namespace scrivalen::api
