#include "LimitPage.h"

#include "DataUse.h"
#include "support/Clsids.h"
#include "support/Numbers.h"
#include "support/OtherPlugins.h"
#include "support/Text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSpinBox>

void openLimitPage()
{
    openSettings(Clsids::DataUse);
}

LimitPage::LimitPage(DataUse& dataUse, QWidget* parent)
    : Page("IDS_LIMIT_TITLE", "IDS_LIMIT_LEAD", Look::Sign::Data, parent)
    , m_dataUse(dataUse)
    , m_isOn(new QCheckBox)
    , m_unit(new QComboBox)
{
    const DataLimit& limit = dataUse.limit();
    m_isOn->setChecked(limit.isOn);
    m_unit->addItems({QString(), QString()});
    m_unit->setCurrentIndex(limit.unit);
    m_amount = makeNumber(limit.amount, 1, DataLimit::MostAmount);
    m_warnAt = makeNumber(limit.warnAt, DataLimit::LeastShare, DataLimit::MostShare);
    m_firstDay = makeNumber(limit.firstDay, 1, 31);
    content()->addWidget(m_isOn);
    content()->addWidget(makeFields());
    content()->addStretch();
    connect(m_isOn, &QCheckBox::toggled, this, &LimitPage::store);
    connect(m_unit, qOverload<int>(&QComboBox::currentIndexChanged), this, &LimitPage::store);
    for (QWidget* field :
         {static_cast<QWidget*>(m_amount), static_cast<QWidget*>(m_unit), static_cast<QWidget*>(m_warnAt)}) {
        field->setEnabled(limit.isOn);
        connect(m_isOn, &QCheckBox::toggled, field, &QWidget::setEnabled);
    }
    keepTranslated(this, [this] { showTexts(); });
}

QSpinBox* LimitPage::makeNumber(int value, int least, int most)
{
    auto* field = new QSpinBox;
    field->setRange(least, most);
    field->setButtonSymbols(QSpinBox::NoButtons);
    field->setValue(value);
    connect(field, qOverload<int>(&QSpinBox::valueChanged), this, &LimitPage::store);
    return field;
}

QWidget* LimitPage::makeFields()
{
    auto* panel = new Surface;
    auto* rows = new QGridLayout(panel);
    rows->setContentsMargins(Look::Gap * 2, Look::Gap * 2, Look::Gap * 2, Look::Gap * 2);
    rows->setSpacing(Look::Gap);
    rows->setColumnStretch(3, 1);
    addRow(rows, "IDS_LIMIT_AMOUNT", m_amount, m_unit);
    addRow(rows, "IDS_LIMIT_WARN_AT", m_warnAt);
    addRow(rows, "IDS_LIMIT_FIRST_DAY", m_firstDay);
    return panel;
}

void LimitPage::addRow(QGridLayout* rows, const char* caption, QWidget* field, QWidget* more)
{
    auto* label = new QLabel;
    label->setBuddy(field);
    const int row = rows->rowCount();
    rows->addWidget(label, row, 0);
    rows->addWidget(field, row, 1);
    if (more)
        rows->addWidget(more, row, 2);
    keepTranslated(label, [=] {
        label->setText(text(caption));
        field->setAccessibleName(label->text());
    });
}

void LimitPage::showTexts()
{
    m_isOn->setText(text("IDS_LIMIT_ON"));
    m_unit->setItemText(DataLimit::Megabytes, sharedText("IDS_UNIT_MB"));
    m_unit->setItemText(DataLimit::Gigabytes, sharedText("IDS_UNIT_GB"));
    m_unit->setAccessibleName(text("IDS_LIMIT_UNIT"));
    for (QSpinBox* field : {m_amount, m_warnAt, m_firstDay})
        field->setLocale(languageLocale());
    m_warnAt->setSuffix(text("IDS_LIMIT_PER_CENT"));
}

void LimitPage::store()
{
    DataLimit limit;
    limit.isOn = m_isOn->isChecked();
    limit.amount = m_amount->value();
    limit.unit = DataLimit::Unit(m_unit->currentIndex());
    limit.warnAt = m_warnAt->value();
    limit.firstDay = m_firstDay->value();
    limit.save();
    m_dataUse.loadLimit();
}
