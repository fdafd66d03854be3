#pragma once

#include "support/Page.h"

class QListWidget;
class QPushButton;

/// The panel with the numbers that were dialled last; hidden while there are none. A click or an arrow key chooses a
/// number, the Delete key removes it.
class RecentList : public Surface
{
    Q_OBJECT

public:
    explicit RecentList(QWidget* parent = nullptr);

    /// Shows the numbers as they are now. Call it once the panel is part of a page.
    void refresh();

    /// Moves the focus to the first number and chooses it.
    void enter();

Q_SIGNALS:
    void chosen(const QString& number);
    void callRequested(); ///< for the chosen number

private:
    void choose();
    void removeCurrent();

    QListWidget* m_list;
    QPushButton* m_remove;
};
