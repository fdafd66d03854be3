#pragma once

#include "Meaning.h"
#include "support/Page.h"

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

Q_SIGNALS:
    void pressed(Action action);

private:
    void showButton(const Meaning& meaning);

    Action m_action = Action::Connect;
    QLabel* m_picture;
    QLabel* m_title;
    QLabel* m_sentence;
    QPushButton* m_button;
};
