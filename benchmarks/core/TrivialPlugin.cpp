#include "PluginContainer/BasePlugin.h"

class TrivialPlugin : public BasePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
};

#include "TrivialPlugin.moc"
