#include "InstallationDialog.h"

#include "MainWindow.h"
#include "PluginStatusText.h"
#include "PluginsView.h"
#include "SupportReport.h"
#include "common/CommonUtils.h"
#include "support/Dialog.h"
#include "support/ElidedLabel.h"
#include "support/Page.h"
#include "support/Text.h"

#include <QClipboard>
#include <QDir>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>

namespace {

constexpr QSize Size{688, 420};

struct Fact
{
    const char* caption;
    QString (*value)(const QString& key);
};

constexpr Fact Facts[] = {
    {"IDS_INSTALLATION_VERSION",
     [](const QString&) {
         return QCoreApplication::applicationVersion();
     }},
    {"IDS_INSTALLATION_FOLDER",
     [](const QString&) {
         return QDir::toNativeSeparators(CommonUtils::GetPluginLibraryPath());
     }},
    {"IDS_INSTALLATION_OPERATOR",
     [](const QString&) {
         return operatorInWords();
     }},
    {"IDS_INSTALLATION_CUSTOMISED_FOR", keyInWords},
};

/// A folder can be long; the others fit.
QWidget* makeFacts(MainWindow* window)
{
    auto* facts = new QWidget;
    auto* form = new QFormLayout(facts);
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(Look::Margin);
    for (const Fact& fact : Facts) {
        QLabel* const caption = Look::quietLabel(QString());
        auto* value = new ElidedLabel;
        form->addRow(caption, value);
        const auto refresh = [=] {
            caption->setText(text(fact.caption));
            value->setAccessibleName(caption->text());
            value->setFullText(fact.value(window->situation().key));
        };
        keepTranslated(value, refresh);
        QObject::connect(window, &MainWindow::situationChanged, value, refresh);
    }
    return facts;
}

QLayout* makeButtons(QDialog* dialog, MainWindow* window)
{
    auto* copy = new QPushButton;
    auto* close = new QPushButton;
    QLabel* const hint = Look::quietLabel(QString());
    for (QPushButton* const button : {copy, close})
        button->setMinimumSize(Look::ButtonSize);
    QObject::connect(copy, &QPushButton::clicked, dialog, [=] {
        QGuiApplication::clipboard()->setText(supportReport(window->situation().key));
        hint->setText(text("IDS_INSTALLATION_COPIED"));
    });
    QObject::connect(close, &QPushButton::clicked, dialog, &QDialog::close);
    keepTranslated(copy, [=] {
        copy->setText(text("IDS_INSTALLATION_COPY"));
        close->setText(text("IDS_ABOUT_CLOSE"));
        hint->clear();
    });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(copy);
    buttons->addWidget(hint, 1);
    buttons->addWidget(close);
    return buttons;
}

} // namespace

void showInstallation(MainWindow* window)
{
    auto* dialog = new ExtendDialog(window, Qt::WindowCloseButtonHint, enWidgetFixed);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    keepTranslated(dialog, [dialog] { dialog->setWindowTitle(caption("IDS_MENU_INSTALLATION").text); });
    auto* plugins = new PluginsView;
    QObject::connect(window, &MainWindow::situationChanged, plugins, &PluginsView::refresh);
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(Look::Margin, Look::Gap * 2, Look::Margin, Look::Gap * 2);
    layout->setSpacing(Look::Gap * 2);
    layout->addWidget(makeFacts(window));
    layout->addWidget(plugins, 1);
    layout->addLayout(makeButtons(dialog, window));
    fillDialog(dialog, content, Size);
    dialog->open();
}
