#pragma once

#include <string>

namespace scrivalen {

/// Moves a finished file to a path on the same volume, and replaces any file there. The new file gets the old one's
/// rights: on Linux mode, owner, group and access control list; on Windows access control list and attributes. Where
/// the system does not allow that, it gets narrower rights, never wider ones.
/// @return false, with the reason in lastSystemError and the target unchanged, when that fails
bool replaceFile(const std::wstring& finished, const std::wstring& target) noexcept;

/// Gives a file the rights of another, or narrower ones.
/// @return false, with the reason in lastSystemError, when its rights may be wider
bool copyRights(const std::wstring& from, const std::wstring& to) noexcept;

}  // namespace scrivalen
