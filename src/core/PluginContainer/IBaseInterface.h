#pragma once

#include "skylume_global.h"

/// Root of the interfaces that the core library gives to plugins.
///
/// Plugins are compiled against the order of the virtual operations: it never changes, and new operations are
/// only ever added at the end of the last derived class.
class SKYLUME_EXPORT IBaseInterface
{
public:
    virtual ~IBaseInterface();

    /// Does nothing: the object belongs to the core library.
    virtual void Release() = 0;

    /// Always 0: each operation reports its own failures.
    virtual int GetLastError() = 0;
};
