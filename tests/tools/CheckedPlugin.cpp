#include "PluginContainer/BasePlugin.h"

#include <stdexcept>

/// A plugin of the checked installation; with THROWS one that cannot be constructed.
class CheckedPlugin : public BasePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

public:
    CheckedPlugin()
    {
#ifdef THROWS
        throw std::runtime_error("not today");
#endif
    }
};

#include "CheckedPlugin.moc"
