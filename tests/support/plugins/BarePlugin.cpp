#include <QObject>
#include <QtPlugin>

/// A Qt plugin that knows nothing of the base interface.
class BarePlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.test.BarePlugin")
};

#include "BarePlugin.moc"
