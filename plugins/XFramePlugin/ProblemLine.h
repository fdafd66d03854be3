#pragma once

#include <QWidget>

class QLabel;

/// A line below the pages about what keeps the application from working as it should: settings that cannot be saved, and
/// configuration files that cannot be read to their ends. Hidden while there is no such problem.
class ProblemLine : public QWidget
{
    Q_OBJECT

public:
    explicit ProblemLine(QWidget* parent = nullptr);

    /// Asks the device service and the plugin host.
    void refresh();

private:
    QLabel* m_label;
};
