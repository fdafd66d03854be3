#include "ModemChooser.h"

#include "support/Look.h"
#include "support/ModemInUse.h"
#include "support/Text.h"

#include <QActionGroup>
#include <QMenu>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace {

constexpr int Widest = 280; ///< in pixels; modems can have names of any length
constexpr int Narrowest = 80;

} // namespace

ModemChooser::ModemChooser(QWidget* parent)
    : QToolButton(parent)
{
    setObjectName(QStringLiteral("modemChooser")); // for style sheets
    setMenu(new QMenu(this));
    setPopupMode(InstantPopup);
    setAutoRaise(true);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    Look::setFont(this, Look::TitleText, QFont::DemiBold);
    hide();
    keepTranslated(this, [this] { setToolTip(::text("IDS_HEADER_CHOOSE")); });
}

void ModemChooser::showModems(const Modems& modems)
{
    const Modem inUse = modemInUse(modems);
    if (modems == m_modems && inUse == m_inUse)
        return; // the menu may be open
    m_modems = modems;
    m_inUse = inUse;
    setText(shownName(inUse));
    fillMenu();
}

void ModemChooser::fillMenu()
{
    menu()->clear();
    auto* group = new QActionGroup(menu());
    for (const Modem& modem : qAsConst(m_modems)) {
        QAction* const entry = menu()->addAction(shownName(modem));
        entry->setCheckable(true);
        entry->setChecked(modem == m_inUse);
        group->addAction(entry);
        connect(entry, &QAction::triggered, this, [this, modem] { use(modem); });
    }
}

QSize ModemChooser::sizeHint() const
{
    return QToolButton::sizeHint().boundedTo({Widest, QWIDGETSIZE_MAX});
}

QSize ModemChooser::minimumSizeHint() const
{
    return sizeHint().boundedTo({Narrowest, QWIDGETSIZE_MAX});
}

void ModemChooser::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    const int lacking = qMax(0, QToolButton::sizeHint().width() - width());
    const QString name = fontMetrics().elidedText(option.text, Qt::ElideRight,
                                                  fontMetrics().horizontalAdvance(option.text) - lacking);
    option.text.clear();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    // Where other names begin; the style would centre it.
    painter.drawItemText(rect(), Qt::AlignVCenter | QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft),
                         palette(), isEnabled(), name, QPalette::ButtonText);
}

void ModemChooser::use(const Modem& modem)
{
    useModem(modem);
    showModems(Modems(m_modems));
}
