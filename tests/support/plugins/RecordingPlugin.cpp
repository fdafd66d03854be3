#include "CallRecorder.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/IBasePlugin.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/INotifyService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"

#include <QRect>
#include <QWidget>

extern const char testPluginName[];

namespace {

QVariant record(const char* operation, const QVariantList& arguments = {}, const QVariant& fallback = {})
{
    const QString name = QLatin1String(testPluginName) + QLatin1Char('.') + QLatin1String(operation);
    return CallRecorder::instance().record(name, arguments, fallback);
}

// Widgets travel as QObject*, a type of Qt's own: any other would be registered by this library, and its
// entry would dangle once the library is unloaded.
QVariant object(QWidget* widget)
{
    return QVariant::fromValue<QObject*>(widget);
}

QWidget* widget(const QVariant& answer)
{
    return qobject_cast<QWidget*>(answer.value<QObject*>());
}

} // namespace

/// A plugin that can play every role and reports each call to the CallRecorder as "<library>.<operation>".
/// Unless the test sets other answers, Init() returns 1, every interface number in use is answered with this
/// object, and everything else is answered with null, false or an empty text.
class RecordingPlugin : public QObject,
                        public IBasePlugin,
                        public IUIPlugin,
                        public IMainFrameUIService,
                        public IDeviceMgr,
                        public ILayout,
                        public ICallUIPlugin,
                        public INotifyService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(IBasePlugin IUIPlugin IMainFrameUIService IDeviceMgr ILayout ICallUIPlugin INotifyService)

public:
    RecordingPlugin() { record("constructed"); }
    ~RecordingPlugin() override { record("destructed"); }

    int Init() override { return record("Init", {}, 1).toInt(); }
    void Destroy() override { record("Destroy"); }
    void UnSDKRegisterEvent() override { record("UnSDKRegisterEvent"); }

    /// Recorded as "QueryInterface(<number in hexadecimal>)"; the answer is a QObject*.
    bool QueryInterface(int iid, void** out) override
    {
        using namespace PluginIds;
        const bool isKnown =
            iid == RootObject || iid == FirstService || iid == MainFrameService || iid == NotifyStopService;
        const QByteArray operation = "QueryInterface(0x" + QByteArray::number(iid, 16) + ')';
        QObject* const known = isKnown ? this : nullptr;
        const QVariant answer = record(operation.constData(), {iid}, QVariant::fromValue(known));
        if (QObject* const object = answer.value<QObject*>())
            *out = object;
        return answer.value<QObject*>();
    }

    QWidget* BuildFrame(QWidget* parent, const QRect& geometry) override
    {
        return widget(record("BuildFrame", {object(parent), geometry}));
    }
    QWidget* GetMainWindow() override { return widget(record("GetMainWindow")); }
    QString GetLayoutPluginClsid() override { return record("GetLayoutPluginClsid").toString(); }
    void StartDetection() override { record("StartDetection"); }
    QString GetLastUsedDevice() override { return record("GetLastUsedDevice").toString(); }
    QWidget* CreateArea(QWidget*) override { return nullptr; }
    void AddPage(QWidget*, QWidget*) override {}
    void RemovePage(QWidget*, QWidget*) override {}
    bool Call(const QString& number, _UI_EN_CALL_TYPE type) override
    {
        return record("Call", {number, int(type)}).toBool();
    }
    void StopThreads() override { record("StopThreads"); }
};

#include "RecordingPlugin.moc"
