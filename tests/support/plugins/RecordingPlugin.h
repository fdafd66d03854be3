#pragma once

#include "PluginContainer/interfaces/IBasePlugin.h"
#include "PluginContainer/interfaces/ICallUIPlugin.h"
#include "PluginContainer/interfaces/IDeviceMgr.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/INotifyService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"

#include <QObject>
#include <QVariant>

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
    RecordingPlugin();
    ~RecordingPlugin() override;

    int Init() override;
    /// Recorded as "QueryInterface(<number in hexadecimal>)"; the answer is a QObject*.
    bool QueryInterface(int iid, void** out) override;
    void Destroy() override;
    void UnSDKRegisterEvent() override;

    QWidget* BuildFrame(QWidget* parent, const QRect& geometry) override;
    QWidget* GetMainWindow() override;
    QString GetLayoutPluginClsid() override;
    void StartDetection() override;
    QString GetLastUsedDevice() override;
    QWidget* CreateArea(QWidget* parent) override;
    void AddPage(QWidget* area, QWidget* page) override;
    void RemovePage(QWidget* area, QWidget* page) override;
    bool Call(const QString& number, _UI_EN_CALL_TYPE type) override;
    void StopThreads() override;

private:
    static QVariant record(const char* operation, const QVariantList& arguments = {},
                           const QVariant& fallback = {});
};
