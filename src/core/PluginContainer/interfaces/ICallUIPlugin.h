#pragma once

#include "skylume_global.h"

#include <QString>
#include <QtPlugin>

/// Kinds of calls. Values that are not listed are passed on unchanged.
enum _UI_EN_CALL_TYPE : int { // NOLINT(bugprone-reserved-identifier): part of the interface
    UI_CALL_VOICE = 0,
    UI_CALL_VIDEO = 1,
};

/// The call plugin; interface number PluginIds::FirstService. GUI thread only.
class SKYLUME_EXPORT ICallUIPlugin
{
public:
    virtual ~ICallUIPlugin();

    /// Starts a call and shows its window.
    /// @param number the number as dialled
    /// @return false if the number cannot be dialled or another call is active
    virtual bool Call(const QString& number, _UI_EN_CALL_TYPE type) = 0;
};

Q_DECLARE_INTERFACE(ICallUIPlugin, "com.velquor.skylume.plugin.ICallUIPlugin")
