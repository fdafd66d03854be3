#pragma once

#include <QtGlobal>

/// Marks what the core library exports to the launcher and to plugins.
#if defined(SKYLUME_CORE_BUILD)
#define SKYLUME_EXPORT Q_DECL_EXPORT
#else
#define SKYLUME_EXPORT Q_DECL_IMPORT
#endif
