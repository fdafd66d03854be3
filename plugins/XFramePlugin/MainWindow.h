#pragma once

#include "support/Modems.h"

#include <QPointer>
#include <QWidget>

class HeaderBar;
class PluginsPage;

/// The main window: a header, and below it the area of the pages. It remembers its size and place in the
/// setting "mainwindow"/"geometry".
class MainWindow : public QWidget
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent);
    ~MainWindow() override;

    /// The window's own page. Belongs to the window, wherever a layout puts it.
    QWidget* pluginsPage() const;

    /// Puts the area of the pages below the header. An earlier area must be gone.
    void setArea(QWidget* area);

    /// Shows what is attached and which customisation key is in force.
    void showSituation(const Modems& modems, const QString& key);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void restorePlace();
    void rememberPlace() const;

    HeaderBar* m_header;
    QPointer<PluginsPage> m_pluginsPage;
};
