#pragma once

#include "support/Page.h"

/// The page of the settings about the main window: the colours of the compact window, and who frames windows.
class WindowSettings : public Page
{
    Q_OBJECT

public:
    explicit WindowSettings(QWidget* parent = nullptr);

private:
    QWidget* makeSkins();
    QWidget* makeFrame();
};
