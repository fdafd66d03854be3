#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class ExtendDialog;
class QWidget;

/// The name of a property of the main window: whether closing it only hides it.
constexpr char HidesOnClose[] = "hidesOnClose";

/// Whether an attempt to close the window now only hides it, so that nothing is lost. The session of the desktop ends
/// the application nevertheless.
bool hidesOnClose(const QWidget* window);

/// Asks the user before the main window closes while something would be lost. GUI thread only.
class CloseGuard : public QObject
{
    Q_OBJECT

public:
    /// Identifiers of this plugin's strings.
    struct Question
    {
        const char* title;
        const char* text;
        const char* leave; ///< label of the button that closes the window
        const char* stay;
    };

    /// Watches the main window, which must exist, until this object is deleted. A question that is shown then
    /// disappears.
    /// @param isNeeded called on each attempt to close the window; true asks the question
    /// @param parent   owns this object
    CloseGuard(const Question& question, std::function<bool()> isNeeded, QObject* parent);
    ~CloseGuard() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ask(QWidget* window);

    Question m_question;
    std::function<bool()> m_isNeeded;
    QPointer<ExtendDialog> m_dialog;
    bool m_mayClose = false;
};
