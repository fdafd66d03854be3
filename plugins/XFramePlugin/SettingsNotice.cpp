#include "SettingsNotice.h"

#include "support/Look.h"
#include "support/Modems.h"
#include "support/Text.h"

#include <QHBoxLayout>
#include <QLabel>

SettingsNotice::SettingsNotice(QWidget* parent)
    : QWidget(parent)
{
    QLabel* const line = Look::errorLabel();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(Look::Gap * 2, Look::Gap, Look::Gap * 2, Look::Gap);
    layout->addWidget(line);
    keepTranslated(line, [line] { line->setText(text("IDS_NOTICE_SETTINGS")); });
    hide();
}

void SettingsNotice::refresh()
{
    setVisible(!serviceValue(QStringLiteral("settings-problem")).isEmpty());
}
