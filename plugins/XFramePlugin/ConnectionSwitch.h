#pragma once

#include "TrayState.h"
#include "support/XmlMenu.h"

#include <QObject>
#include <QPointer>
#include <QVector>

/// The menu entries "Connect" and "Disconnect": the one that can be used now is shown. The plugin with the page
/// "Connection" does the work.
class ConnectionSwitch : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Adds the commands to those of a menu.
    void addTo(MenuCommands& commands);

    void follow(const TrayStatus& status);

private:
    struct Entry
    {
        QPointer<QAction> action;
        bool connects;
    };

    void add(QAction* action, bool connects);
    void update(const Entry& entry) const;

    QVector<Entry> m_entries;
    TrayStatus m_status;
};
