#pragma once

#include <QWidget>

/// A line that is shown while the user's settings cannot be saved.
class SettingsNotice : public QWidget
{
    Q_OBJECT

public:
    explicit SettingsNotice(QWidget* parent = nullptr);

    /// Asks the device service.
    void refresh();
};
