#include "SenderChooser.h"

#include "support/Look.h"
#include "support/ModemInUse.h"
#include "support/Text.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

#include <algorithm>

namespace {

/// A SIM is the same sender in any modem.
bool isSameSender(const Modem& left, const Modem& right)
{
    return left.imsi.isEmpty() ? left.id == right.id : left.imsi == right.imsi;
}

} // namespace

SenderChooser::SenderChooser(const Modem& wanted, QWidget* parent)
    : QWidget(parent)
    , m_wanted(wanted)
    , m_caption(Look::quietLabel(QString()))
    , m_list(new QComboBox)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Look::Gap);
    row->addWidget(m_caption);
    row->addWidget(m_list, 1);
    m_caption->setBuddy(m_list);
    m_list->setSizeAdjustPolicy(
        QComboBox::AdjustToMinimumContentsLengthWithIcon); // names can have any length
    connect(m_list, qOverload<int>(&QComboBox::activated), this, &SenderChooser::choose);
    keepTranslated(this, [this] {
        m_caption->setText(text("IDS_SMS_SENDER"));
        m_list->setAccessibleName(m_caption->text());
        m_list->setPlaceholderText(text("IDS_SMS_SENDER_CHOOSE"));
    });
    hide();
    follow();
}

quint32 SenderChooser::modem() const
{
    return m_modems.value(m_list->currentIndex()).id;
}

QString SenderChooser::problem() const
{
    if (modem() != 0)
        return {};
    return text(m_modems.isEmpty() ? "IDS_SMS_NO_SENDER" : "IDS_SMS_OTHER_SENDER");
}

void SenderChooser::follow()
{
    const Modems modems = attachedModems();
    if (modems == m_modems)
        return; // the list may be open
    m_modems = modems;
    if (m_wanted.id == 0 && !modems.isEmpty())
        m_wanted = modemInUse(modems);
    m_list->clear();
    for (const Modem& modem : modems)
        m_list->addItem(shownName(modem));
    const auto wanted = std::find_if(modems.begin(), modems.end(),
                                     [this](const Modem& modem) { return isSameSender(m_wanted, modem); });
    m_list->setCurrentIndex(wanted == modems.end() ? -1 : int(wanted - modems.begin()));
    setVisible(modems.size() > 1 || !(modems.isEmpty() || modem()));
}

void SenderChooser::choose(int index)
{
    m_wanted = m_modems[index];
    Q_EMIT chosen();
}
