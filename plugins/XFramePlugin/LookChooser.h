#pragma once

#include "Skin.h"

#include <QListWidget>

class MainWindow;

/// A list of the looks of the main window with pictures. The choice applies at once.
class LookChooser : public QListWidget
{
    Q_OBJECT

public:
    /// @param window must outlive this object
    explicit LookChooser(MainWindow& window, QWidget* parent = nullptr);

    void doItemsLayout() override;

private:
    void addPicture(const WindowLook& look);
    void showCurrent();
    void apply();
    void translate();
    void resizeItems();

    MainWindow& m_window;
    QVector<WindowLook> m_looks; ///< by row
};
