#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

class FaderWidget;
class QListWidget;
class QStackedWidget;

/// A side bar with one entry per page, and the current page next to it. In a narrow window the side bar shows
/// only icons.
class SideBarArea : public QWidget
{
    Q_OBJECT

public:
    explicit SideBarArea(QWidget* parent);

    void addPage(QWidget* page);
    void removePage(QWidget* page);
    void showPage(QWidget* page);

protected:
    /// Shows the property "badge" of a page on its icon.
    bool eventFilter(QObject* page, QEvent* event) override;

    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// The page that was current when it was removed, until the user chooses another one.
    struct Lost
    {
        QString kind;
        bool hadFocus = false;
        QPointer<QWidget> focus; ///< the widget that had it; null if the page has been deleted
    };

    void leavePage();
    void removeEntry(int index);
    void showBadge(QWidget* page);
    void noteFocus(const QWidget* page);
    void selectRow(int row);
    void forgetLost();
    void addShortcut(const QKeySequence& keys, int step);
    void turnPage(int step);
    void enterPage();
    void returnFocus();
    void fadeIn();
    void fitSideBar();

    QListWidget* m_sideBar;
    QStackedWidget* m_pages;
    Lost m_lost;
    QPointer<FaderWidget> m_fader; ///< over a page that has just become the current one
};
