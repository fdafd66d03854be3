#pragma once

/// Marks what the core library exports to the launcher and to plugins. This header needs no other, so that
/// code without Qt can use it.
#if !defined(_WIN32)
#define SKYLUME_EXPORT __attribute__((visibility("default")))
#elif defined(SKYLUME_CORE_BUILD)
#define SKYLUME_EXPORT __declspec(dllexport)
#else
#define SKYLUME_EXPORT __declspec(dllimport)
#endif
