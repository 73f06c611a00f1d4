#pragma once

#include <string>

namespace scrivalen {

/// The full file name of the module that holds this library, links resolved; empty when the system does not tell.
std::wstring modulePath();

}  // namespace scrivalen
