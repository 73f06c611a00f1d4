#pragma once

// Hosts may hand in null for a text, which counts as an empty one.
namespace scrivalen {

constexpr const wchar_t* orEmpty(const wchar_t* text) { return text ? text : L""; }
constexpr bool isEmpty(const wchar_t* text) { return !text || !*text; }

}  // namespace scrivalen
