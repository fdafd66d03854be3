#pragma once

#include "PluginContainer/interfaces/IUIPlugin.h"

#include <QObject>
#include <QPointer>

#include <functional>

/// Builds a plugin's page for the settings dialog; publish it as PluginIds::SettingsPage. GUI thread only.
class SettingsPageBuilder : public QObject, public IUIPlugin
{
    Q_OBJECT
    Q_INTERFACES(IUIPlugin)

public:
    /// Creates the page as a child of a widget, or of none.
    using Make = std::function<QWidget*(QWidget* parent)>;

    ~SettingsPageBuilder() override;

    /// Creates the page; an earlier one is deleted first.
    /// @return null before start() and after stop()
    QWidget* BuildFrame(QWidget* parent, const QRect& geometry) override;

    /// Lets the page be built from now on; call it in Init().
    void start(const Make& make) { m_make = make; }

    /// Deletes the page; call it in Destroy().
    void stop();

private:
    Make m_make;
    QPointer<QWidget> m_page;
};
