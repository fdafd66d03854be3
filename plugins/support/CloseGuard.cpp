#include "support/CloseGuard.h"

#include "ExtendDialog/DkMessageBox.h"
#include "ExtendDialog/ExtendDialog.h"
#include "common/CommonUtils.h"
#include "support/Text.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPushButton>

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

/// Does not wait for the answer: this plugin may be unloaded while the question is shown.
void CloseGuard::ask(QWidget* window)
{
    auto* const box = new DkMessageBox;
    box->setIcon(QMessageBox::Question);
    box->setText(text(m_question.text));
    const QList<QAbstractButton*> buttons =
        CommonUtils::addMessageboxButton(box, {text(m_question.leave), text(m_question.stay)});
    box->setDefaultButton(static_cast<QPushButton*>(buttons.last()));
    connect(buttons.first(), &QAbstractButton::clicked, this, [this, window] {
        m_mayClose = true;
        window->setProperty(HidesOnClose, false); // the answer is about the end of the application
        window->close();
        m_mayClose = false;
    });
    m_dialog = CommonUtils::MakeMessage(window, text(m_question.title), box);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->open();
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
