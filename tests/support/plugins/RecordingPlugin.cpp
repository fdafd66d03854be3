#include "CallRecorder.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IBasePlugin.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/INotifyService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"

#include <QWidget>

extern const char TestPluginName[];

namespace {

QVariant record(const QString& operation, const QVariantList& arguments = {}, const QVariant& fallback = {})
{
    return CallRecorder::instance().record(TestPluginName + ('.' + operation), arguments, fallback);
}

// Widgets are passed as QObject*, a type of Qt itself: any other would be registered by this library, and its
// entry would dangle once the library is unloaded.
QVariant object(QObject* object)
{
    return QVariant::fromValue(object);
}

QWidget* widget(const QVariant& answer)
{
    return qobject_cast<QWidget*>(answer.value<QObject*>());
}

} // namespace

class FirstService : public QObject, public IDeviceMgr, public ILayout, public ICallUIPlugin
{
    Q_OBJECT
    Q_INTERFACES(IDeviceMgr ILayout ICallUIPlugin)

public:
    void StartDetection() override { record("StartDetection"); }
    QString GetLastUsedDevice() override { return record("GetLastUsedDevice").toString(); }
    QWidget* CreateArea(QWidget*) override { return nullptr; }
    void AddPage(QWidget*, QWidget*) override {}
    void RemovePage(QWidget*, QWidget*) override {}
    bool Call(const QString& number, _UI_EN_CALL_TYPE type) override
    {
        return record("Call", {number, int(type)}).toBool();
    }
};

class MainFrameService : public QObject, public IMainFrameUIService
{
    Q_OBJECT
    Q_INTERFACES(IMainFrameUIService)

public:
    QWidget* GetMainWindow() override { return widget(record("GetMainWindow")); }
    QString GetLayoutPluginClsid() override { return record("GetLayoutPluginClsid").toString(); }
};

class NotifyService : public QObject, public INotifyService
{
    Q_OBJECT
    Q_INTERFACES(INotifyService)

public:
    void StopThreads() override { record("StopThreads"); }
};

/// A plugin for every role that reports each call to the CallRecorder as "<library>.<operation>". Unless the
/// test sets other answers, Init() returns 1, each interface number in use is answered with an object that
/// has the interfaces of this number and no others, and all other calls return null, false or an empty
/// string.
class RecordingPlugin : public QObject, public IBasePlugin, public IUIPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(IBasePlugin IUIPlugin)

public:
    RecordingPlugin() { record("constructed"); }
    ~RecordingPlugin() override { record("destructed"); }

    int Init() override { return record("Init", {}, 1).toInt(); }
    void Destroy() override { record("Destroy"); }
    void UnSDKRegisterEvent() override { record("UnSDKRegisterEvent"); }

    /// Recorded as "QueryInterface(<number in hexadecimal>)"; the answer is a QObject*.
    bool QueryInterface(int iid, void** out) override
    {
        const QHash<int, QObject*> services = {{PluginIds::RootObject, this},
                                               {PluginIds::FirstService, &m_first},
                                               {PluginIds::MainFrameService, &m_mainFrame},
                                               {PluginIds::NotifyStopService, &m_notify}};
        const QString call = "QueryInterface(0x" + QString::number(iid, 16) + ')';
        auto* const service = record(call, {iid}, object(services.value(iid))).value<QObject*>();
        if (service)
            *out = service;
        return service;
    }

    QWidget* BuildFrame(QWidget* parent, const QRect& geometry) override
    {
        return widget(record("BuildFrame", {object(parent), geometry}));
    }

private:
    FirstService m_first;
    MainFrameService m_mainFrame;
    NotifyService m_notify;
};

#include "RecordingPlugin.moc"
