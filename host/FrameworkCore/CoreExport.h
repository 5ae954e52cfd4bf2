#pragma once

// Marks what vantry_core shows to the libraries and programs that link it. Free of Qt, as are the headers
// that the documents share.
#if defined(_WIN32)
#if defined(VANTRY_CORE_LIBRARY)
#define VANTRY_CORE_EXPORT __declspec(dllexport)
#else
#define VANTRY_CORE_EXPORT __declspec(dllimport)
#endif
#else
#define VANTRY_CORE_EXPORT __attribute__((visibility("default")))
#endif
