#include "DataPage.h"

#include "DataUse.h"
#include "DaysPanel.h"
#include "LimitBar.h"
#include "LimitPage.h"
#include "SpeedGraph.h"
#include "Swatch.h"
#include "Words.h"
#include "support/ElidedLabel.h"
#include "support/Numbers.h"
#include "support/Text.h"

#include <QDateTime>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int NarrowPage = 420; ///< narrower ones have no room for a button beside its hint

/// The whole seconds since a moment, in seconds since 1970.
qint64 secondsSince(qint64 moment)
{
    return QDateTime::currentSecsSinceEpoch() - moment;
}

} // namespace

DataPage::DataPage(DataUse& dataUse, QWidget* parent)
    : Page("IDS_DATA_TITLE", "IDS_DATA_LEAD", Look::Sign::Data, parent)
    , m_dataUse(dataUse)
    , m_panels(new QWidget)
    , m_nothing(Look::quietLabel(QString(), true))
    , m_days(new DaysPanel(dataUse))
{
    auto* column = new QVBoxLayout(m_panels);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Look::Gap * 2);
    for (QWidget* panel : {makePeriod(), makeSpeeds(), makeConnection(), static_cast<QWidget*>(m_days)})
        column->addWidget(panel);
    content()->addWidget(m_nothing);
    content()->addWidget(m_panels);
    content()->addStretch();
    connect(&dataUse, &DataUse::changed, this, &DataPage::refresh);
    keepTranslated(this, [this] {
        m_nothing->setText(text("IDS_DATA_NOTHING"));
        refresh();
    });
}

DataPage::~DataPage()
{
    m_dataUse.setWatched(false);
}

DataPage::Cell DataPage::makeCell(const char* caption)
{
    Cell cell{new QWidget, new ElidedLabel};
    auto* column = new QVBoxLayout(cell.widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    QLabel* const captionLabel = Look::quietLabel(QString());
    Look::setFont(cell.value, Look::HeadingText, QFont::DemiBold);
    cell.value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // columns are equally wide
    column->addWidget(captionLabel);
    column->addWidget(cell.value);
    keepTranslated(captionLabel, [=] {
        captionLabel->setText(text(caption));
        cell.value->setAccessibleName(captionLabel->text());
    });
    return cell;
}

QWidget* DataPage::makeSpeeds()
{
    auto* panel = new Surface;
    m_graph = new SpeedGraph;
    m_receiving = new ElidedLabel;
    m_sending = new ElidedLabel;
    auto* legend = new QHBoxLayout;
    legend->setSpacing(Look::Gap);
    for (const auto& [tone, label] :
         {std::pair(Look::Tone::Info, m_receiving), {Look::Tone::Good, m_sending}}) {
        legend->addWidget(new Swatch(tone));
        legend->addWidget(label);
        legend->addSpacing(Look::Gap);
    }
    legend->addStretch();
    QVBoxLayout* const column = panel->makeColumn("IDS_DATA_SPEEDS");
    column->addLayout(legend);
    column->addWidget(m_graph);
    return panel;
}

QWidget* DataPage::makeConnection()
{
    auto* panel = new Surface;
    auto* line = new QHBoxLayout;
    line->setSpacing(Look::Gap * 2);
    m_received = makeCell("IDS_DATA_RECEIVED");
    m_sent = makeCell("IDS_DATA_SENT");
    m_duration = makeCell("IDS_DATA_DURATION");
    for (const Cell& cell : {m_received, m_sent, m_duration})
        line->addWidget(cell.widget);
    panel->makeColumn("IDS_DATA_CONNECTION")->addLayout(line);
    return panel;
}

QWidget* DataPage::makePeriod()
{
    auto* panel = new Surface;
    m_periodDays = Look::quietLabel(QString());
    m_usage = Look::label(QString(), Look::HeadingText, QFont::DemiBold);
    m_usage->setWordWrap(true);
    m_bar = new LimitBar;
    m_advice = Look::label(QString(), Look::NormalText);
    m_advice->setWordWrap(true);
    m_warning = new Swatch(Look::Tone::Bad);
    m_setLimit = new QPushButton;
    m_setLimit->setAutoDefault(true);
    connect(m_setLimit, &QPushButton::clicked, this, &openLimitPage);
    keepTranslated(m_setLimit, [this] { m_setLimit->setText(text("IDS_DATA_SET_LIMIT")); });
    auto* advice = new QHBoxLayout;
    advice->setSpacing(Look::Gap);
    advice->addWidget(m_warning);
    advice->addWidget(m_advice, 1);
    m_hint = new QBoxLayout(QBoxLayout::LeftToRight);
    m_hint->setSpacing(Look::Gap);
    m_hint->addLayout(advice, 1);
    m_hint->addWidget(m_setLimit, 0, Qt::AlignLeft | Qt::AlignVCenter);
    QVBoxLayout* const column = panel->makeColumn("IDS_DATA_PERIOD");
    column->addWidget(m_periodDays);
    column->addWidget(m_usage);
    column->addWidget(m_bar);
    column->addLayout(m_hint);
    return panel;
}

void DataPage::refresh()
{
    const Account* const account = m_dataUse.account();
    m_panels->setVisible(account);
    m_nothing->setVisible(!account);
    if (!account)
        return;
    showSpeeds(*account);
    showConnection(*account);
    showPeriod(*account);
    m_days->refresh();
}

void DataPage::showSpeeds(const Account& account)
{
    const Units& units = m_dataUse.units();
    const QVector<SpeedLog::Step>& steps = account.speeds().steps();
    const bool isKnown = account.isConnected() && !steps.isEmpty();
    const auto speed = [&](quint64 Traffic::*direction) {
        return units.speed(isKnown ? QString::number(steps.last().perSecond.*direction) : QString());
    };
    m_graph->showSpeeds(account.speeds(), m_dataUse.now(), units);
    const QString receiving = speed(&Traffic::received);
    const QString sending = speed(&Traffic::sent);
    m_receiving->setFullText(QStringLiteral("\u2193 ") + receiving);
    m_sending->setFullText(QStringLiteral("\u2191 ") + sending);
    m_receiving->setAccessibleName(text("IDS_DATA_RECEIVING").arg(receiving));
    m_sending->setAccessibleName(text("IDS_DATA_SENDING").arg(sending));
    m_graph->setAccessibleName(text("IDS_DATA_SPEEDS"));
    m_graph->setAccessibleDescription(m_receiving->accessibleName() + QLatin1String(", ") +
                                      m_sending->accessibleName());
}

void DataPage::showConnection(const Account& account)
{
    const Units& units = m_dataUse.units();
    const QString none(QChar(0x2013));
    const bool isConnected = account.isConnected();
    const bool isTimed = isConnected && account.connectedSince() > 0;
    m_received.value->setFullText(isConnected ? units.volume(account.sinceConnecting().received) : none);
    m_sent.value->setFullText(isConnected ? units.volume(account.sinceConnecting().sent) : none);
    m_duration.value->setFullText(
        isTimed ? durationText(secondsSince(account.connectedSince()), languageLocale()) : none);
}

void DataPage::showPeriod(const Account& account)
{
    const Units& units = m_dataUse.units();
    const Period period = m_dataUse.period();
    const quint64 used = account.history().sum(period).total();
    const quint64 limit = m_dataUse.limitBytes();
    const LimitState state = m_dataUse.stateOf(account);
    m_periodDays->setText(periodText(period));
    m_usage->setText(usageText(used, limit, units));
    m_bar->setVisible(limit > 0);
    m_bar->showShare(shareOf(used, limit), m_dataUse.limit().warnAt, state);
    m_bar->setAccessibleName(m_usage->text());
    showTitle(state, shareOf(used, limit));
    if (limit == 0)
        m_advice->setText(text("IDS_DATA_NO_LIMIT"));
    else if (state == LimitState::Reached)
        m_advice->setText(text("IDS_DATA_REACHED"));
    else
        m_advice->setText(
            text("IDS_DATA_LEFT").arg(isolated(units.volume(limit - used)), dateText(period.last)));
    m_setLimit->setVisible(limit == 0);
    m_warning->setVisible(state != LimitState::Below);
}

/// The window's list of pages shows the title, so that a warning is visible on other pages, too.
void DataPage::showTitle(LimitState state, int share)
{
    setWindowTitle(state == LimitState::Below ? text("IDS_DATA_TITLE")
                                              : text("IDS_DATA_TITLE_SHARE").arg(numberText(share)));
}

void DataPage::resizeEvent(QResizeEvent* event)
{
    m_hint->setDirection(width() < NarrowPage ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    Page::resizeEvent(event);
}

void DataPage::showEvent(QShowEvent* event)
{
    Page::showEvent(event);
    m_dataUse.setWatched(true);
}

void DataPage::hideEvent(QHideEvent* event)
{
    Page::hideEvent(event);
    m_dataUse.setWatched(false);
}
