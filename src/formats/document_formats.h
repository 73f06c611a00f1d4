#pragma once

#include "document/output.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen {

/// The format of a name, which is one that documents are written in; null for another.
const document::Format* documentFormatOf(std::string_view name);

/// The format that a path's extension stands for, in any case; null for an unknown one.
const document::Format* documentFormatOfPath(std::string_view path);

/// The names of the formats; null after the last. Valid for ever.
const char* documentFormatName(std::size_t index);

/// The names of the formats, as a sentence lists them: "text, html".
std::string documentFormatNames();

}  // namespace scrivalen
