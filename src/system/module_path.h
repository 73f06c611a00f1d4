#pragma once

#include <string>

namespace scrivalen {

/// The full path of the module that contains this library; empty when it is unknown. On Linux, links are resolved.
std::wstring modulePath();

}  // namespace scrivalen
