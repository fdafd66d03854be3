#include "ModemChooser.h"

#include "support/Look.h"
#include "support/Text.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>

namespace {

QString nameOf(const Modem& modem)
{
    return modem.port.isEmpty() ? modem.name : modem.name + QStringLiteral(" \u00b7 ") + modem.port;
}

} // namespace

ModemChooser::ModemChooser(QWidget* parent)
    : QWidget(parent)
    , m_list(new QComboBox)
{
    QLabel* const caption = Look::quietLabel(QString());
    caption->setBuddy(m_list);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Look::Gap);
    layout->addWidget(caption);
    layout->addWidget(m_list);
    layout->addStretch();
    hide();
    connect(m_list, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { Q_EMIT chosen(m_modems[index]); });
    keepTranslated(caption, [=] {
        caption->setText(text("IDS_CONN_IN_USE"));
        m_list->setAccessibleName(caption->text());
    });
}

void ModemChooser::showModems(const Modems& modems, const Modem& inUse)
{
    if (!(modems == m_modems)) { // filling the list would close it while the user chooses
        m_modems = modems;
        m_list->clear();
        for (const Modem& modem : modems)
            m_list->addItem(nameOf(modem));
    }
    m_list->setCurrentIndex(modems.indexOf(inUse));
    setVisible(modems.size() > 1);
}
