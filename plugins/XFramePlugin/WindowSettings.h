#pragma once

#include "support/Page.h"

class MainWindow;

/// The page of the settings about the look of the main window, and about who frames windows.
class WindowSettings : public Page
{
    Q_OBJECT

public:
    /// @param window must outlive this object
    explicit WindowSettings(MainWindow& window, QWidget* parent = nullptr);
};
