// Placing dialogs and showing messages.
#include "common/CommonUtils.h"

#include "ExtendDialog/DialogPlacement_p.h"
#include "ExtendDialog/DkMessageBox.h"
#include "ExtendDialog/ExtendDialog.h"
#include "common/Log.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QPointer>
#include <QPushButton>
#include <QScreen>

#include <algorithm>
#include <array>

namespace {

constexpr std::array<QMessageBox::ButtonRole, 3> ButtonRoles{QMessageBox::YesRole, QMessageBox::NoRole,
                                                             QMessageBox::RejectRole};

constexpr QLatin1String SubFrameName("miniplugin_subframedlg");

/// The window over which a dialog is centred; null when there is none.
QWidget* referenceWindow(const QDialog* dialog)
{
    for (QWidget* ancestor = dialog->parentWidget(); ancestor; ancestor = ancestor->parentWidget())
        if (ancestor->objectName() == SubFrameName)
            return ancestor;
    return CommonUtils::GetMainWindow();
}

QRect onScreen(const QWidget* widget)
{
    return {widget->mapToGlobal(QPoint()), widget->size()};
}

void placeOver(QDialog* dialog, const QWidget* reference, const QScreen* screen)
{
    if (!screen)
        return;
    dialog->setGeometry(
        DialogPlacement::centred(onScreen(reference), dialog->size(), screen->availableGeometry()));
}

/// Shows a message until it is answered or its dialog is closed. QDialog::exec() would also end when the message
/// is hidden together with a minimised main window.
/// @return position of the pressed button in `order`, or -1
int runMessage(ExtendDialog* message, const DkMessageBox* content, const QList<QAbstractButton*>& order)
{
    const QPointer<ExtendDialog> dialog(message); // either may be deleted while the message is shown
    const QPointer<const DkMessageBox> box(content);
    QEventLoop loop;
    QObject::connect(dialog, &QDialog::finished, &loop, &QEventLoop::quit);
    QObject::connect(dialog, &ExtendDialog::dlgCloseEvent, &loop, &QEventLoop::quit);
    QObject::connect(dialog, &QObject::destroyed, &loop, &QEventLoop::quit);
    dialog->setModal(true);
    dialog->show();
    loop.exec(QEventLoop::DialogExec);
    const int answer = box ? order.indexOf(box->clickedButton()) : -1;
    delete dialog;
    return answer;
}

} // namespace

void CommonUtils::MoveCentre(QDialog* dialog)
{
    LOG_DEBUG("%s: %s: Enter", LOG_FILE, LOG_FUNCTION);
    const QWidget* const reference = dialog ? referenceWindow(dialog) : nullptr;
    if (!reference) {
        LOG_DEBUG("Arg is NULL: %s: %s: %s %d", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
        return;
    }
    placeOver(dialog, reference, QGuiApplication::primaryScreen());
    LOG_DEBUG("%s: %s: Exit", LOG_FILE, LOG_FUNCTION);
}

void CommonUtils::MoveRelatedCentre(QDialog* dialog, QWidget* reference)
{
    if (!dialog || !reference)
        return;
    QScreen* const screen = QGuiApplication::screenAt(onScreen(reference).center());
    placeOver(dialog, reference, screen ? screen : QGuiApplication::primaryScreen());
}

QPoint CommonUtils::GetCentrePoint(QWidget* reference, QSize size)
{
    return reference ? DialogPlacement::centrePoint(onScreen(reference), size) : QPoint();
}

QList<QAbstractButton*> CommonUtils::addMessageboxButton(QMessageBox* box, const QStringList& buttons)
{
    QList<QAbstractButton*> added;
    const int count = box ? std::min(buttons.size(), static_cast<int>(ButtonRoles.size())) : 0;
    for (int i = 0; i < count; ++i)
        added.append(box->addButton(buttons[i], ButtonRoles[static_cast<std::size_t>(i)]));
    return added;
}

int CommonUtils::ShowMessage(QWidget* parent, QString title, QString text, QStringList buttons,
                             QMessageBox::Icon icon, bool canClose)
{
    auto* const box = new DkMessageBox;
    box->setIcon(icon);
    box->setText(text);
    QList<QAbstractButton*> order = addMessageboxButton(box, buttons);
    if (order.isEmpty())
        order.append(box->addButton(QMessageBox::Ok));
    return runMessage(MakeMessage(parent, title, box, canClose), box, order);
}

int CommonUtils::ShowMessageCustomize(QWidget* parent, QString title, DkMessageBox* box, bool canClose)
{
    return box ? runMessage(MakeMessage(parent, title, box, canClose), box, box->buttons()) : -1;
}

ExtendDialog* CommonUtils::MakeMessage(QWidget* parent, QString title, DkMessageBox* box, bool canClose)
{
    if (!box)
        return nullptr;
    auto* const dialog =
        new ExtendDialog(parent ? parent : GetMainWindow(), Qt::WindowCloseButtonHint, enWidgetMessage);
    dialog->setWindowTitle(title);
    dialog->AddMainWidget(box);
    box->m_bEscapeAllowed = true;
    if (!canClose) {
        dialog->EnableCloseButton(false);
        box->m_bEscapeAllowed = false;
    }
    QObject::connect(box, &DkMessageBox::changeSize, dialog, &ExtendDialog::changeSize);
    QObject::connect(box, &QDialog::finished, dialog, &QDialog::done);
    box->show();
    return dialog;
}
