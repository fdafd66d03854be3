#include "GeneralSettings.h"

#include "Autostart.h"
#include "Background.h"
#include "Change/Change.h"
#include "Change/LanguageFiles.h"
#include "LanguageMenu.h"
#include "MainWindow.h"
#include "support/Text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

GeneralSettings::GeneralSettings(MainWindow& window, QWidget* parent)
    : Page("IDS_GENERAL_TITLE", "IDS_GENERAL_LEAD", Look::Sign::Modem, parent)
    , m_window(window)
    , m_fault(Look::errorLabel())
{
    content()->addWidget(makeLanguages());
    content()->addWidget(makeAutostart());
    if (window.hasTray())
        content()->addWidget(makeBackground());
    m_fault->hide();
    content()->addWidget(m_fault);
    content()->addStretch();
}

QWidget* GeneralSettings::makeLanguages()
{
    auto* choice = new QComboBox;
    for (const QString& code : availableLanguages())
        choice->addItem(LanguageFiles::ownName(code), code);
    connect(choice, qOverload<int>(&QComboBox::activated), this,
            [this, choice] { m_window.useLanguage(choice->currentData().toString()); });
    QLabel* const caption = Look::label(QString(), Look::NormalText);
    caption->setBuddy(choice);
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(caption);
    layout->addWidget(choice);
    layout->addStretch();
    keepTranslated(row, [=] { // the language may also be changed elsewhere
        choice->setCurrentIndex(choice->findData(Change::GetLangName()));
        caption->setText(::caption("IDS_MENU_LANGUAGE").text);
        choice->setAccessibleName(caption->text());
    });
    return row;
}

QWidget* GeneralSettings::makeAutostart()
{
    auto* box = new QCheckBox;
    box->setChecked(Autostart::isOn());
    connect(box, &QCheckBox::toggled, this, [this, box](bool isOn) {
        const bool isDone = Autostart::setOn(isOn);
        m_fault->setText(text("IDS_GENERAL_AUTOSTART_FAILED"));
        m_fault->setVisible(!isDone);
        const QSignalBlocker blocker(box);
        box->setChecked(Autostart::isOn());
    });
    keepTranslated(box, [box] { box->setText(text("IDS_GENERAL_AUTOSTART")); });
    return box;
}

QWidget* GeneralSettings::makeBackground()
{
    auto* box = new QCheckBox;
    box->setChecked(Background::isWanted());
    connect(box, &QCheckBox::toggled, this, [this](bool isWanted) {
        Background::setWanted(isWanted);
        m_window.followBackground();
    });
    keepTranslated(box, [box] { box->setText(text("IDS_GENERAL_BACKGROUND")); });
    return box;
}
