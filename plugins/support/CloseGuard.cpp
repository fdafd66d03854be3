#include "support/CloseGuard.h"

#include "common/CommonUtils.h"
#include "support/Text.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

CloseGuard::CloseGuard(const Question& question, std::function<bool()> isNeeded, QObject* parent)
    : QObject(parent)
    , m_question(question)
    , m_isNeeded(std::move(isNeeded))
{
    if (QWidget* const window = CommonUtils::GetMainWindow())
        window->installEventFilter(this);
}

bool CloseGuard::mayClose() const
{
    constexpr int leaveButton = 0;
    return CommonUtils::ShowMessage(CommonUtils::GetMainWindow(), text(m_question.title),
                                    text(m_question.text), {text(m_question.leave), text(m_question.stay)},
                                    QMessageBox::Question, true) == leaveButton;
}

bool CloseGuard::eventFilter(QObject*, QEvent* event)
{
    if (event->type() != QEvent::Close || !m_isNeeded())
        return false;
    const QPointer<CloseGuard> self(this); // the call may end while the question is shown
    if (mayClose() || !self)
        return false;
    event->ignore();
    return true;
}
