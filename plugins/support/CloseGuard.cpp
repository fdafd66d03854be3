#include "support/CloseGuard.h"

#include "ExtendDialog/DkMessageBox.h"
#include "ExtendDialog/ExtendDialog.h"
#include "common/CommonUtils.h"
#include "support/Text.h"

#include <QAbstractButton>
#include <QEvent>

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
    const QAbstractButton* const leave =
        CommonUtils::addMessageboxButton(box, {text(m_question.leave), text(m_question.stay)}).first();
    connect(leave, &QAbstractButton::clicked, this, [this, window] {
        m_mayClose = true;
        window->close();
        m_mayClose = false;
    });
    m_dialog = CommonUtils::MakeMessage(window, text(m_question.title), box);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->open();
}

bool CloseGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Close || m_mayClose || !m_isNeeded())
        return false;
    if (!m_dialog)
        ask(static_cast<QWidget*>(watched));
    event->ignore();
    return true;
}
