#include "support/CloseGuard.h"

#include "common/CommonUtils.h"

#include <QEvent>
#include <QGuiApplication>
#include <QVariant>

namespace {

/// A property of the main window: the guards whose questions the user has answered with the first answer, one after the
/// other. All plugins share it. A question that ends otherwise empties it.
constexpr char Answered[] = "answeredCloseGuards";

QVariant nameOf(const CloseGuard* guard)
{
    return quintptr(guard);
}

} // namespace

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

bool CloseGuard::isAnswered(const QWidget* window) const
{
    return window->property(Answered).toList().contains(nameOf(this));
}

void CloseGuard::ask(QWidget* window)
{
    const auto onAnswer = [this, window](int answer) {
        if (answer != 0)
            return;
        window->setProperty(Answered, window->property(Answered).toList() << nameOf(this));
        window->setProperty(HidesOnClose, false); // the answer is about the end of the application
        if (window->close())                      // unless another guard asks now
            window->setProperty(Answered, {});
    };
    m_dialog = ::ask(m_question, window, this, onAnswer);
    connect(m_dialog, &QObject::destroyed, this, [this, window = QPointer<QWidget>(window)] {
        if (window && !isAnswered(window))
            window->setProperty(Answered, {});
    });
}

bool CloseGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Close)
        return false;
    auto* const window = static_cast<QWidget*>(watched);
    if (isAnswered(window) || hidesOnClose(window) || !m_isNeeded())
        return false;
    if (!m_dialog)
        ask(window);
    event->ignore();
    return true;
}
