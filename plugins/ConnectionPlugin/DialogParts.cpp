#include "DialogParts.h"

#include "support/Look.h"
#include "support/Text.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QVariant>

QLineEdit* addField(QVBoxLayout* column, const char* caption)
{
    auto* field = new QLineEdit;
    Look::followText(field);
    field->setMinimumHeight(Look::FieldHeight);
    QLabel* const label = Look::quietLabel(QString());
    label->setBuddy(field);
    auto* block = new QWidget;
    auto* rows = new QVBoxLayout(block);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Look::Gap / 2);
    rows->addWidget(label);
    rows->addWidget(field);
    column->addWidget(block);
    keepTranslated(label, [=] {
        label->setText(text(caption));
        field->setAccessibleName(label->text());
    });
    return field;
}

QLayout* makeButtons(QDialog* dialog, QPushButton* primary, const char* label)
{
    auto* cancel = new QPushButton;
    QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::close);
    primary->setParent(dialog); // which has to know what the Return key presses in its fields
    primary->setDefault(true);
    primary->setProperty("primary", true); // for style sheets
    auto* row = new QHBoxLayout;
    row->setSpacing(Look::Gap);
    row->addStretch();
    for (QPushButton* button : {cancel, primary}) {
        button->setMinimumSize(Look::ButtonSize);
        row->addWidget(button);
    }
    keepTranslated(cancel, [=] {
        setCaption(cancel, "IDS_CONN_CANCEL");
        setCaption(primary, label);
    });
    return row;
}
