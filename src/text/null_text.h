#pragma once

// Hosts may pass null for a text; it counts as empty.
namespace scrivalen {

constexpr const wchar_t* orEmpty(const wchar_t* text) { return text ? text : L""; }
constexpr bool isEmpty(const wchar_t* text) { return !text || !*text; }

}  // namespace scrivalen
