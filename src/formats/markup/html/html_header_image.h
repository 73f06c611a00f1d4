#pragma once

#include "document/model/warnings.h"
#include "document/settings/settings.h"

#include <string>

namespace scrivalen::document {

/// The picture of "header-image" as an image of CSS (CSS Images, 2.1) that holds its bytes, no larger than the top
/// margin has room for.
/// @param warnings  gets one when there is no such picture
/// @return empty without a picture
std::string htmlHeaderImage(const FormatSettings& settings, OutputWarnings& warnings);

}  // namespace scrivalen::document
