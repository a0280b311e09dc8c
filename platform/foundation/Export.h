#pragma once

/// @file

/// Marks what the shared libraries publish; everything else keeps hidden visibility.
#if defined(_WIN32)
#define TL_EXPORT __declspec(dllexport)
#else
#define TL_EXPORT __attribute__((visibility("default")))
#endif
