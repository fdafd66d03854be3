#include "DaysPanel.h"

#include "DataUse.h"
#include "DayBars.h"
#include "Words.h"
#include "support/Text.h"

#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>

namespace {

constexpr int StepHeight = 30;
constexpr qreal SignScale = 1.4;

} // namespace

DaysPanel::DaysPanel(const DataUse& dataUse)
    : m_dataUse(dataUse)
    // In a window that is laid out from right to left, these characters are mirrored like the layout.
    , m_earlier(makeStep(QStringLiteral("\u2039"), "IDS_DATA_EARLIER", 1))
    , m_later(makeStep(QStringLiteral("\u203a"), "IDS_DATA_LATER", -1))
    , m_month(Look::label(QString(), Look::NormalText))
    , m_bars(new DayBars)
    , m_export(new QPushButton)
    , m_exported(Look::quietLabel(QString(), true))
{
    connect(m_export, &QPushButton::clicked, this, &DaysPanel::askForFile);
    keepTranslated(m_export, [this] {
        setCaption(m_export, "IDS_DATA_EXPORT");
        m_exported->hide();
    });
    QVBoxLayout* const column = makeColumn("IDS_DATA_DAYS", m_export);
    for (QWidget* part : {makeMonthLine(), static_cast<QWidget*>(m_bars), static_cast<QWidget*>(m_exported)})
        column->addWidget(part);
}

QWidget* DaysPanel::makeMonthLine()
{
    auto* line = new QWidget;
    auto* parts = new QHBoxLayout(line);
    parts->setContentsMargins(0, 0, 0, 0);
    parts->setSpacing(Look::Gap);
    m_month->setAlignment(Qt::AlignCenter);
    m_month->setWordWrap(true); // in narrow windows
    parts->addWidget(m_earlier);
    parts->addWidget(m_month, 1);
    parts->addWidget(m_later);
    return line;
}

QPushButton* DaysPanel::makeStep(const QString& sign, const char* name, int months)
{
    auto* button = new QPushButton(sign);
    QFont font = button->font();
    font.setPointSizeF(font.pointSizeF() * SignScale);
    button->setFont(font);
    button->setFixedHeight(StepHeight);
    button->setAutoDefault(true); // the Return key presses it while it has the focus
    connect(button, &QPushButton::clicked, this, [this, months] { step(months); });
    keepTranslated(button, [=] {
        button->setToolTip(text(name));
        button->setAccessibleName(button->toolTip());
    });
    return button;
}

void DaysPanel::step(int months)
{
    m_monthsBack += months;
    const bool hadFocus = m_earlier->hasFocus() || m_later->hasFocus();
    refresh();
    // At either end the button that was pressed is disabled and would pass the focus on to something else.
    if (hadFocus && !(m_earlier->hasFocus() || m_later->hasFocus()))
        (months > 0 ? m_later : m_earlier)->setFocus();
}

void DaysPanel::refresh()
{
    if (const Account* const account = m_dataUse.account()) {
        showMonth(*account);
        m_export->setEnabled(!account->history().days.isEmpty());
    }
}

void DaysPanel::showMonth(const Account& account)
{
    const History& history = account.history();
    Period month = m_dataUse.period();
    const QDate oldest = history.days.isEmpty() ? month.first : history.days.firstKey();
    int back = 0;
    for (; back < m_monthsBack && month.first > oldest; ++back)
        month = periodOf(month.first.addDays(-1), m_dataUse.limit().firstDay);
    m_monthsBack = back;
    m_earlier->setEnabled(month.first > oldest);
    m_later->setEnabled(back > 0);
    QString volume = m_dataUse.units().volume(history.sum(month).total());
    volume.replace(QLatin1Char(' '), QChar(QChar::Nbsp)); // narrow windows break the line before it
    m_month->setText(text("IDS_DATA_IN_MONTH").arg(periodText(month), isolated(volume)));
    m_bars->showDays(history.days, month, m_dataUse.units());
    m_bars->setAccessibleName(text("IDS_DATA_DAYS"));
    m_bars->setAccessibleDescription(m_month->text());
}

/// Without waiting for the answer, as the plugin may be unloaded meanwhile. Another SIM card may be in use by then, too, so
/// the table is made now.
void DaysPanel::askForFile()
{
    const Account* const account = m_dataUse.account();
    if (!account)
        return;
    const QByteArray table =
        csvOf(account->history().days,
              {text("IDS_DATA_CSV_DAY"), text("IDS_DATA_CSV_RECEIVED"), text("IDS_DATA_CSV_SENT")});
    delete m_files;
    m_files =
        new QFileDialog(this, caption("IDS_DATA_EXPORT").text, QString(), QStringLiteral("CSV (*.csv)"));
    m_files->setAcceptMode(QFileDialog::AcceptSave);
    m_files->setDefaultSuffix(QStringLiteral("csv"));
    m_files->selectFile(QStringLiteral("data-use.csv"));
    connect(m_files, &QFileDialog::fileSelected, this,
            [this, table](const QString& path) { writeTable(path, table); });
    m_files->open();
}

void DaysPanel::writeTable(const QString& path, const QByteArray& table)
{
    QSaveFile file(path);
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(table) == table.size() && file.commit();
    m_exported->setText(text(isWritten ? "IDS_DATA_EXPORTED" : "IDS_DATA_NOT_EXPORTED").arg(path));
    m_exported->show();
}
