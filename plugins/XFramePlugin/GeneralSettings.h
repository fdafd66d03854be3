#pragma once

#include "support/Page.h"

class MainWindow;
class QLabel;

/// The page of the settings about the application as a whole: its language, and when it runs.
class GeneralSettings : public Page
{
    Q_OBJECT

public:
    /// @param window must outlive this object
    explicit GeneralSettings(MainWindow& window, QWidget* parent = nullptr);

private:
    QWidget* makeLanguages();
    QWidget* makeAutostart();
    QWidget* makeBackground();

    MainWindow& m_window;
    QLabel* m_fault; ///< says that the system has not taken a choice
};
