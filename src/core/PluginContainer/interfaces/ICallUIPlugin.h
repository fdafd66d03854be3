#pragma once

#include "skylume_global.h"

#include <QString>
#include <QtPlugin>

/// Kinds of calls.
enum _UI_EN_CALL_TYPE { // NOLINT(bugprone-reserved-identifier): part of the interface
    UI_CALL_VOICE = 0,
    UI_CALL_VIDEO = 1,
};

/// The call plugin, answered under PluginIds::FirstService. GUI thread only.
class SKYLUME_EXPORT ICallUIPlugin
{
public:
    virtual ~ICallUIPlugin();

    /// Begins a call and shows its window.
    /// @param number the number to call, as dialled
    /// @return whether the call was begun; false when the number cannot be dialled or a call is going on
    virtual bool Call(const QString& number, _UI_EN_CALL_TYPE type) = 0;
};

Q_DECLARE_INTERFACE(ICallUIPlugin, "com.velquor.skylume.plugin.ICallUIPlugin")
