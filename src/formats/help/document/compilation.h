#pragma once

#include "document/model/writer.h"

#include <string>

namespace scrivalen::help {

/// Compiles the project in a folder of its own. Raises OutputFailure when that leaves no help file. What else the
/// compiler has to say becomes warnings.
/// @param folder  without a separator at its end
/// @return false when the document was cancelled
bool compile(const std::wstring& folder, const document::WriterContext& context);

}  // namespace scrivalen::help
