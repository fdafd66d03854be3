#pragma once

#include "Meaning.h"
#include "support/Page.h"

class QBoxLayout;
class QLabel;
class QPushButton;

/// The state of the connection in large, with a sentence and the button that changes it.
class StatePanel : public Surface
{
    Q_OBJECT

public:
    explicit StatePanel(QWidget* parent = nullptr);

    /// @param sentence shown instead of that of the meaning, unless empty
    void showMeaning(const Meaning& meaning, const QString& sentence);

    /// Whether there is so little height that the picture has to be beside the title.
    void setLow(bool isLow);

Q_SIGNALS:
    void pressed(Action action);

protected:
    void resizeEvent(QResizeEvent* event) override;

    /// Ignores the second click of a double click and keys that are held down: by then the button does the opposite.
    bool eventFilter(QObject* button, QEvent* event) override;

private:
    void adapt();
    void showPicture();
    void showButton(const Meaning& meaning);

    Action m_action = Action::Connect;
    Look::Sign m_sign = Look::Sign::Globe; ///< that no state has
    bool m_isLow = false;
    bool m_isTight = false; ///< saves height
    QBoxLayout* m_head;     ///< picture and title
    QLabel* m_picture;
    QLabel* m_title;
    QLabel* m_sentence;
    QPushButton* m_button;
};
