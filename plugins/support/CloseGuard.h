#pragma once

#include "support/Dialog.h"

#include <QObject>
#include <QPointer>

#include <functional>

/// The name of a property of the main window: whether closing it only hides it.
constexpr char HidesOnClose[] = "hidesOnClose";

/// Whether an attempt to close the window now only hides it, so that nothing is lost. The session of the desktop ends
/// the application nevertheless.
bool hidesOnClose(const QWidget* window);

/// Asks the user before the main window closes while something would be lost. If there are several, they ask one after the
/// other. GUI thread only.
class CloseGuard : public QObject
{
    Q_OBJECT

public:
    /// Watches the main window, which must exist, until this object is deleted. A question that is shown then
    /// disappears.
    /// @param question its first answer closes the window
    /// @param isNeeded called on each attempt to close the window; true asks the question
    /// @param parent   owns this object
    CloseGuard(const Question& question, std::function<bool()> isNeeded, QObject* parent);
    ~CloseGuard() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isAnswered(const QWidget* window) const;
    void ask(QWidget* window);

    Question m_question;
    std::function<bool()> m_isNeeded;
    QPointer<ExtendDialog> m_dialog;
};
