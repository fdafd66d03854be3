// A plugin that throws in every role: as a page, as the status bar, as the layout and as the main frame.
#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/ILayout.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"

#include <stdexcept>

class FaultyPlugin : public BasePlugin, public IUIPlugin, public IMainFrameUIService, public ILayout
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(IUIPlugin IMainFrameUIService ILayout)

public:
    FaultyPlugin()
    {
        publish(PluginIds::FirstService, this);
        publish(PluginIds::MainFrameService, this);
    }

    int Init() override { throw std::runtime_error("faulty"); }
    QWidget* BuildFrame(QWidget*, const QRect&) override { throw std::runtime_error("faulty"); }
    QWidget* CreateArea(QWidget*) override { throw std::runtime_error("faulty"); }
    void AddPage(QWidget*, QWidget*) override {}
    void RemovePage(QWidget*, QWidget*) override {}
    QWidget* GetMainWindow() override { throw std::runtime_error("faulty"); }
    QString GetLayoutPluginClsid() override { return {}; }
};

#include "FaultyPlugin.moc"
