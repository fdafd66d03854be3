#include "DataPage.h"

#include "DataUse.h"
#include "DayBars.h"
#include "LimitBar.h"
#include "LimitNotice.h"
#include "SpeedGraph.h"
#include "Swatch.h"
#include "support/ElidedLabel.h"
#include "support/Numbers.h"
#include "support/Text.h"

#include <QDateTime>
#include <QFileDialog>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>

namespace {

/// A panel with a heading, and a corner at the other end of its line.
QVBoxLayout* makePanel(QWidget* panel, const char* title, QWidget* corner)
{
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(Look::Gap * 2, Look::Gap * 2, Look::Gap * 2, Look::Gap * 2);
    column->setSpacing(Look::Gap);
    auto* line = new QHBoxLayout;
    QLabel* const heading = Look::label(QString(), 1.15, QFont::DemiBold);
    line->addWidget(heading, 1);
    if (corner)
        line->addWidget(corner);
    column->addLayout(line);
    keepTranslated(heading, [=] { heading->setText(text(title)); });
    return column;
}

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
{
    auto* column = new QVBoxLayout(m_panels);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Look::Gap * 2);
    for (QWidget* panel : {makePeriod(), makeSpeeds(), makeConnection(), makeDays()})
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
    Look::setFont(cell.value, 1.1, QFont::DemiBold);
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
    QVBoxLayout* const column = makePanel(panel, "IDS_DATA_SPEEDS", nullptr);
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
    makePanel(panel, "IDS_DATA_CONNECTION", nullptr)->addLayout(line);
    return panel;
}

QWidget* DataPage::makePeriod()
{
    auto* panel = new Surface;
    m_periodDays = Look::quietLabel(QString());
    m_usage = Look::label(QString(), 1.1, QFont::DemiBold);
    m_usage->setWordWrap(true);
    m_bar = new LimitBar;
    m_advice = Look::label(QString(), 1.0);
    m_advice->setWordWrap(true);
    m_warning = new Swatch(Look::Tone::Bad);
    auto* advice = new QHBoxLayout;
    advice->setSpacing(Look::Gap);
    advice->addWidget(m_warning);
    advice->addWidget(m_advice, 1);
    QVBoxLayout* const column = makePanel(panel, "IDS_DATA_PERIOD", m_periodDays);
    column->addWidget(m_usage);
    column->addWidget(m_bar);
    column->addLayout(advice);
    return panel;
}

QWidget* DataPage::makeDays()
{
    auto* panel = new Surface;
    m_bars = new DayBars;
    m_export = new QPushButton;
    m_exported = Look::quietLabel(QString(), true);
    connect(m_export, &QPushButton::clicked, this, &DataPage::askForFile);
    keepTranslated(m_export, [this] {
        setCaption(m_export, "IDS_DATA_EXPORT");
        m_exported->clear();
    });
    QVBoxLayout* const column = makePanel(panel, "IDS_DATA_DAYS", m_export);
    column->addWidget(m_bars);
    column->addWidget(m_exported);
    m_exported->hide();
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
    showDays(*account);
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
    const QLocale locale = languageLocale();
    const Units& units = m_dataUse.units();
    const Period period = m_dataUse.period();
    const quint64 used = account.history().sum(period).total();
    const quint64 limit = m_dataUse.limitBytes();
    const LimitState state = m_dataUse.stateOf(account);
    const auto date = [&locale](const QDate& day) {
        return locale.toString(day, QLocale::ShortFormat);
    };
    m_periodDays->setText(text("IDS_DATA_FROM_TO").arg(date(period.first), date(period.last)));
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
        m_advice->setText(text("IDS_DATA_LEFT").arg(isolated(units.volume(limit - used)), date(period.last)));
    m_warning->setVisible(state != LimitState::Below);
}

/// The window's list of pages shows the title, so that a warning is visible on other pages, too.
void DataPage::showTitle(LimitState state, int share)
{
    setWindowTitle(state == LimitState::Below ? text("IDS_DATA_TITLE")
                                              : text("IDS_DATA_TITLE_SHARE").arg(numberText(share)));
}

void DataPage::showDays(const Account& account)
{
    const History::Days& days = account.history().days;
    const QDate today = QDate::currentDate();
    const Traffic shown = account.history().sum({today.addDays(1 - DayBars::Shown), today});
    m_bars->showDays(days, today, m_dataUse.units());
    m_bars->setAccessibleName(text("IDS_DATA_DAYS"));
    m_bars->setAccessibleDescription(m_dataUse.units().volume(shown.total()));
    m_export->setEnabled(!days.isEmpty());
}

/// Without waiting for the answer, as the plugin may be unloaded meanwhile.
void DataPage::askForFile()
{
    delete m_files;
    m_files =
        new QFileDialog(this, caption("IDS_DATA_EXPORT").text, QString(), QStringLiteral("CSV (*.csv)"));
    m_files->setAcceptMode(QFileDialog::AcceptSave);
    m_files->setDefaultSuffix(QStringLiteral("csv"));
    m_files->selectFile(QStringLiteral("data-use.csv"));
    connect(m_files, &QFileDialog::fileSelected, this, &DataPage::writeTable);
    m_files->open();
}

void DataPage::writeTable(const QString& path)
{
    const Account* const account = m_dataUse.account();
    if (!account)
        return;
    const QByteArray table =
        csvOf(account->history().days,
              {text("IDS_DATA_CSV_DAY"), text("IDS_DATA_CSV_RECEIVED"), text("IDS_DATA_CSV_SENT")});
    QSaveFile file(path);
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(table) == table.size() && file.commit();
    m_exported->setText(text(isWritten ? "IDS_DATA_EXPORTED" : "IDS_DATA_NOT_EXPORTED").arg(path));
    m_exported->show();
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
