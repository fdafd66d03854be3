#pragma once

#include <QListWidget>

class MainWindow;

/// A list of the looks of the main window with pictures: the usual window, and the compact one in each of its skins. The
/// choice applies at once.
class LookChooser : public QListWidget
{
    Q_OBJECT

public:
    /// @param window must outlive this object
    explicit LookChooser(MainWindow& window, QWidget* parent = nullptr);

private:
    void addLook(const QString& skin, bool isCompact);
    void showCurrent();
    void apply();
    void translate();

    MainWindow& m_window;
};
