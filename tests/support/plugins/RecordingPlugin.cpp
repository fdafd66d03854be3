#include "RecordingPlugin.h"

#include "CallRecorder.h"
#include "PluginContainer/PluginIds.h"

#include <QRect>
#include <QWidget>

extern const char testPluginName[];

// Widgets travel as QObject*, a type of Qt's own: any other would be registered by this library, and its
// entry would dangle once the library is unloaded.
static QVariant object(QWidget* widget)
{
    return QVariant::fromValue<QObject*>(widget);
}

static QWidget* widget(const QVariant& answer)
{
    return qobject_cast<QWidget*>(answer.value<QObject*>());
}

RecordingPlugin::RecordingPlugin()
{
    record("constructed");
}

RecordingPlugin::~RecordingPlugin()
{
    record("destructed");
}

int RecordingPlugin::Init()
{
    return record("Init", {}, 1).toInt();
}

bool RecordingPlugin::QueryInterface(int iid, void** out)
{
    using namespace PluginIds;
    const bool isKnown =
        iid == RootObject || iid == FirstService || iid == MainFrameService || iid == NotifyStopService;
    const QByteArray operation = "QueryInterface(0x" + QByteArray::number(iid, 16) + ')';
    QObject* const known = isKnown ? this : nullptr;
    QObject* const answer =
        record(operation.constData(), {iid}, QVariant::fromValue(known)).value<QObject*>();
    if (answer)
        *out = answer;
    return answer;
}

void RecordingPlugin::Destroy()
{
    record("Destroy");
}

void RecordingPlugin::UnSDKRegisterEvent()
{
    record("UnSDKRegisterEvent");
}

QWidget* RecordingPlugin::BuildFrame(QWidget* parent, const QRect& geometry)
{
    return widget(record("BuildFrame", {object(parent), geometry}));
}

QWidget* RecordingPlugin::GetMainWindow()
{
    return widget(record("GetMainWindow"));
}

QString RecordingPlugin::GetLayoutPluginClsid()
{
    return record("GetLayoutPluginClsid").toString();
}

void RecordingPlugin::StartDetection()
{
    record("StartDetection");
}

QString RecordingPlugin::GetLastUsedDevice()
{
    return record("GetLastUsedDevice").toString();
}

QWidget* RecordingPlugin::CreateArea(QWidget* parent)
{
    return widget(record("CreateArea", {object(parent)}));
}

void RecordingPlugin::AddPage(QWidget* area, QWidget* page)
{
    record("AddPage", {object(area), object(page)});
}

void RecordingPlugin::RemovePage(QWidget* area, QWidget* page)
{
    record("RemovePage", {object(area), object(page)});
}

bool RecordingPlugin::Call(const QString& number, _UI_EN_CALL_TYPE type)
{
    return record("Call", {number, int(type)}).toBool();
}

void RecordingPlugin::StopThreads()
{
    record("StopThreads");
}

QVariant RecordingPlugin::record(const char* operation, const QVariantList& arguments,
                                 const QVariant& fallback)
{
    const QString name = QLatin1String(testPluginName) + QLatin1Char('.') + QLatin1String(operation);
    return CallRecorder::instance().record(name, arguments, fallback);
}
