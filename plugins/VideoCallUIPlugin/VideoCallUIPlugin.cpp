#include "PluginContainer/BasePlugin.h"

/// Toolbars offer video calls while this plugin is enabled and the setting "callvideo" is 1. CallUIPlugin makes them, as
/// it makes voice calls; both must be enabled.
class VideoCallUIPlugin : public BasePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
};

#include "VideoCallUIPlugin.moc"
