#include <QObject>
#include <QtPlugin>

void definedNowhere();

/// A plugin that misses a symbol, which it needs only when it is deleted.
class UndefinedPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")

public:
    ~UndefinedPlugin() override { definedNowhere(); }
};

#include "UndefinedPlugin.moc"
