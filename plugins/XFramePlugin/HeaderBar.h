#pragma once

#include "Situation.h"

#include <QWidget>

class ElidedLabel;
class QLabel;
class QToolButton;

/// The top of the main window: the attached modem, the operator, what the application is customised for, and
/// the menu button. A compact or narrow window has only the modem and the button.
class HeaderBar : public QWidget
{
    Q_OBJECT

public:
    /// Call setCompact() before it is shown.
    explicit HeaderBar(QWidget* parent = nullptr);

    /// Leaves picture and background to the title bar that the header has been put into.
    void becomeTitle();

    void showSituation(const Situation& situation);
    void setCompact(bool isCompact);

    /// The size of the picture of the current form, in pixels.
    static int pictureSize(bool isCompact);

    /// The button for the main menu, at the end of the header.
    QToolButton* menuButton() const { return m_menuButton; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QLayout* makeModemColumn();
    QWidget* makeFacts();
    void refresh();
    void showFacts();

    Situation m_situation;
    bool m_isTitle = false;
    bool m_isCompact = false;
    QLabel* m_picture;
    ElidedLabel* m_modem;
    ElidedLabel* m_modemState;
    ElidedLabel* m_operator;
    ElidedLabel* m_key;
    QWidget* m_facts;
    QToolButton* m_menuButton;
};
