#include "AboutDialog.h"

#include "FrameStyle.h"
#include "support/Dialog.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int PictureSize = 64;
constexpr QSize PreferredSize{528, 360};

QString notices()
{
    QFile file(CommonUtils::GetPluginLibraryPath() + QLatin1String("/notices.txt"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : text("IDS_ABOUT_NO_NOTICES");
}

QLayout* makeHead()
{
    auto* picture = new QLabel;
    picture->setPixmap(FrameStyle::picture().pixmap(PictureSize, PictureSize));
    QLabel* const version = Look::quietLabel(QString());
    auto* column = new QVBoxLayout;
    column->setSpacing(Look::Gap / 2);
    column->addWidget(
        Look::label(QGuiApplication::applicationDisplayName(), Look::TitleText, QFont::DemiBold));
    column->addWidget(version);
    auto* head = new QHBoxLayout;
    head->setSpacing(Look::Gap * 2);
    head->addWidget(picture);
    head->addLayout(column, 1);
    keepTranslated(version, [version] {
        version->setText(text("IDS_ABOUT_VERSION").arg(QCoreApplication::applicationVersion()) +
                         QStringLiteral(" \u00b7 ") + text("IDS_ABOUT_QT").arg(QLatin1String(qVersion())));
    });
    return head;
}

QPlainTextEdit* makeNotices()
{
    auto* view = new QPlainTextEdit;
    view->setReadOnly(true);
    view->setTabChangesFocus(true);
    keepTranslated(view, [view] {
        view->setAccessibleName(text("IDS_ABOUT_NOTICES"));
        view->setPlainText(notices());
    });
    return view;
}

QWidget* makeContent(QDialog* dialog)
{
    auto* content = new QWidget;
    QLabel* const caption = Look::label(QString(), Look::NormalText, QFont::DemiBold);
    auto* close = new QPushButton;
    close->setMinimumSize(Look::ButtonSize);
    QObject::connect(close, &QPushButton::clicked, dialog, &QDialog::close);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(Look::Margin, Look::Gap * 2, Look::Margin, Look::Gap * 2);
    layout->setSpacing(Look::Gap);
    layout->addLayout(makeHead());
    layout->addSpacing(Look::Gap);
    layout->addWidget(caption);
    layout->addWidget(makeNotices(), 1);
    layout->addWidget(close, 0, Qt::AlignRight);
    keepTranslated(content, [=] {
        caption->setText(text("IDS_ABOUT_NOTICES"));
        close->setText(text("IDS_ABOUT_CLOSE"));
    });
    close->setFocus();
    return content;
}

} // namespace

void showAbout(QWidget* parent)
{
    auto* dialog = new ExtendDialog(parent, Qt::WindowCloseButtonHint, enWidgetNormal);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    keepTranslated(dialog, [dialog] { dialog->setWindowTitle(caption("IDS_MENU_ABOUT").text); });
    fillDialog(dialog, makeContent(dialog), PreferredSize);
    makeResizable(dialog);
    dialog->open();
}
