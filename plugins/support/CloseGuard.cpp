#include "support/CloseGuard.h"

#include "common/CommonUtils.h"

#include <QEvent>
#include <QGuiApplication>

bool hidesOnClose(const QWidget* window)
{
    return window->property(HidesOnClose).toBool() && !qGuiApp->isSavingSession();
}

CloseGuard::CloseGuard(const Question& question, std::function<bool()> isNeeded, QObject* parent)
    : QObject(parent)
    , m_question(question)
    , m_isNeeded(std::move(isNeeded))
{
    if (QWidget* const window = CommonUtils::GetMainWindow())
        window->installEventFilter(this);
}

CloseGuard::~CloseGuard()
{
    delete m_dialog;
}

void CloseGuard::ask(QWidget* window)
{
    const auto onAnswer = [this, window](int answer) {
        if (answer != 0)
            return;
        m_mayClose = true;
        window->setProperty(HidesOnClose, false); // the answer is about the end of the application
        window->close();
        m_mayClose = false;
    };
    m_dialog = ::ask(m_question, window, this, onAnswer);
}

bool CloseGuard::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const window = static_cast<QWidget*>(watched);
    if (event->type() != QEvent::Close || m_mayClose || hidesOnClose(window) || !m_isNeeded())
        return false;
    if (!m_dialog)
        ask(static_cast<QWidget*>(watched));
    event->ignore();
    return true;
}
