#include "support/Dialog.h"

#include "ExtendDialog/DkMessageBox.h"
#include "common/CommonUtils.h"
#include "common/ShowInFront.h"
#include "support/Look.h"
#include "support/Text.h"
#include "support/WindowEdges.h"

#include <QLayout>
#include <QPushButton>
#include <QScreen>

namespace {

constexpr int PictureSize = 40;

} // namespace

void fillDialog(ExtendDialog* dialog, QWidget* content, const QSize& preferred)
{
    dialog->AddMainWidget(content);
    const QSize frame(2 * content->x(), content->x() + content->y());
    const QSize available = dialog->screen()->availableGeometry().size() - frame;
    content->resize(content->sizeHint().expandedTo(preferred).boundedTo(available));
    content->show();
    dialog->changeSize(content->size());
}

void fitToContent(ExtendDialog* dialog)
{
    QWidget* const content = dialog->GetMainWidget();
    if (!content)
        return;
    content->layout()->activate();
    const int width = content->maximumWidth();
    dialog->changeSize({width, content->layout()->totalHeightForWidth(width)});
}

void makeResizable(ExtendDialog* dialog)
{
    if (!dialog->IsCusTitle())
        return;
    dialog->SetCentreOnResize(false); // the edge that is not dragged stays where it is
    new WindowEdges(dialog->GetTileBar(), dialog->GetMainWidget()->x());
}

void bringToFront(ExtendDialog* dialog)
{
    TitleBar* const titleBar = dialog->GetTileBar();
    if (titleBar && titleBar->IsMinimized())
        titleBar->showRestore();
    showInFront(dialog);
}

ExtendDialog* ask(const Question& question, QWidget* window, QObject* receiver,
                  const std::function<void(int answer)>& onAnswer)
{
    auto* const box = new DkMessageBox;
    box->setIconPixmap(Look::tileIcon(Look::Sign::Help).pixmap(PictureSize, PictureSize));
    box->setText(text(question.text));
    QStringList captions;
    for (const char* id : question.answers)
        captions.append(text(id));
    const QList<QAbstractButton*> buttons = CommonUtils::addMessageboxButton(box, captions);
    for (int i = 0; i < buttons.size(); ++i)
        QObject::connect(buttons[i], &QAbstractButton::clicked, receiver, [onAnswer, i] { onAnswer(i); });
    box->setDefaultButton(static_cast<QPushButton*>(buttons.last()));
    ExtendDialog* const dialog = CommonUtils::MakeMessage(window, text(question.title), box);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
    return dialog;
}
