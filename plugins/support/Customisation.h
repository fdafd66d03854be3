#pragma once

#include <QObject>

class QWidget;

/// Reports when the main frame has customised the application, for example because another modem was attached: the
/// plugins that the rules enable are loaded by then, and no others. The device service reports a modem before that. GUI
/// thread only.
class Customisation : public QObject
{
    Q_OBJECT

public:
    /// Follows the main window, which must exist, until this object is deleted.
    explicit Customisation(QObject* parent);

    /// Has all objects of this class report; for the main frame.
    static void report(QWidget* mainWindow);

Q_SIGNALS:
    void applied();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
