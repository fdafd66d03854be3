#include "ModemChooser.h"

#include "support/Look.h"
#include "support/ModemInUse.h"
#include "support/Text.h"

#include <QActionGroup>
#include <QMenu>
#include <QStyleOptionToolButton>
#include <QStylePainter>

#include <algorithm>

namespace {

constexpr int Narrowest = 80;

/// Leaves out the end of the name rather than the port, by which modems of the same model are told apart.
QString shortened(const QString& name, const QString& nameAndPort, const QFontMetrics& metrics, int lacking)
{
    const QString port = nameAndPort.mid(name.size());
    const int width = metrics.horizontalAdvance(nameAndPort) - lacking;
    const int nameWidth = std::max(0, width - metrics.horizontalAdvance(port));
    return metrics.elidedText(metrics.elidedText(name, Qt::ElideRight, nameWidth) + port, Qt::ElideMiddle,
                              width);
}

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
    const int spaces = fontMetrics().horizontalAdvance(QLatin1String("  ")); // which Qt adds beside the text
    return {QToolButton::sizeHint().width() - spaces, fontMetrics().height() + 2 * FrameWidth};
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
    QString name = option.text;
    if (const int lacking = sizeHint().width() - width(); lacking > 0)
        name = shortened(m_inUse.name, shownName(m_inUse), fontMetrics(), lacking);
    option.text.clear();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    // Where other names begin; the style would centre it.
    const Qt::Alignment place = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignVCenter;
    painter.drawItemText(rect(), int(place), palette(), isEnabled(), name, QPalette::ButtonText);
}

void ModemChooser::use(const Modem& modem)
{
    useModem(modem);
    showModems(Modems(m_modems));
}
