#pragma once

/// @file
/// SCRIVALEN_API marks the exported symbols; all others stay hidden.
/// Define SCRIVALEN_STATIC before including a header when linking the static library.

#if defined(SCRIVALEN_STATIC)
#define SCRIVALEN_API
#elif defined(_WIN32)
#if defined(SCRIVALEN_BUILDING)
#define SCRIVALEN_API __declspec(dllexport)
#else
#define SCRIVALEN_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define SCRIVALEN_API __attribute__((visibility("default")))
#else
#define SCRIVALEN_API
#endif
