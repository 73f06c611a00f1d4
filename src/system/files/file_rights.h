#pragma once

#include <string>

namespace scrivalen {

/// Moves a finished file over another of the same volume, or to where there is none. A file that is replaced hands its
/// rights on: on Linux mode, owner, group and access control list, on Windows the access control list and the
/// attributes. Where the system does not allow that, the new file has narrower rights, never wider ones.
/// @return false, with the reason in lastSystemError; the target is as it was then
bool replaceFile(const std::wstring& finished, const std::wstring& target) noexcept;

/// Gives a file the rights of another, or narrower ones.
/// @return false, with the reason in lastSystemError, when its rights may be wider
bool copyRights(const std::wstring& from, const std::wstring& to) noexcept;

}  // namespace scrivalen
