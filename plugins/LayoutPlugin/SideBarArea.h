#pragma once

#include <QPointer>
#include <QWidget>

class QListWidget;
class QStackedWidget;

/// A side bar with one line per page, and the chosen page beside it. Where there is little room, the lines
/// show their pictures alone.
class SideBarArea : public QWidget
{
    Q_OBJECT

public:
    explicit SideBarArea(QWidget* parent);

    void addPage(QWidget* page);
    void removePage(QWidget* page);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void dropLine(int index);

    QListWidget* m_sideBar;
    QStackedWidget* m_pages;
    QPointer<QWidget> m_takenOut; ///< the page that was shown when it was removed
};
