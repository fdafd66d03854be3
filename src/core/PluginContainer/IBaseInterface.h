#pragma once

#include "skylume_global.h"

/// Root of the interfaces that the core library hands to plugins.
///
/// Plugins are compiled against the order of the virtual operations: it never changes, and new operations are
/// only ever added at the end of the last derived class.
class SKYLUME_EXPORT IBaseInterface
{
public:
    virtual ~IBaseInterface();

    /// Does nothing: the owner of an interface decides on its life, not its users.
    virtual void Release() = 0;

    /// Always 0; failures are reported by the operations themselves.
    virtual int GetLastError() = 0;
};
