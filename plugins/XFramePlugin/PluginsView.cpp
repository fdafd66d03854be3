#include "PluginsView.h"

#include "BadgeDelegate.h"
#include "PluginContainer/PluginContainer.h"
#include "PluginStatusModel.h"
#include "PluginStatusText.h"
#include "Startup/Startup.h"
#include "support/Page.h"
#include "support/Text.h"

#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

namespace {

constexpr int RowHeight = 40;
constexpr int CellMargin = 4;
constexpr int WidestColumn = 280; ///< longer names are cut off

/// Column titles on the background of the table, with a line below.
class FlatHeader : public QHeaderView
{
public:
    explicit FlatHeader(QWidget* parent)
        : QHeaderView(Qt::Horizontal, parent)
    {
    }

protected:
    void paintSection(QPainter* painter, const QRect& section, int column) const override
    {
        const QRect line = section.adjusted(0, section.height() - 1, 0, 0);
        const QRect title = section.adjusted(CellMargin, 0, -CellMargin, 0);
        painter->fillRect(section, palette().base());
        painter->fillRect(line, Look::lineColor(palette()));
        painter->setPen(Look::toneColor(Look::Tone::Quiet, palette()));
        painter->drawText(title, Qt::AlignVCenter, model()->headerData(column, orientation()).toString());
    }
};

/// Keeps names away from the next column.
class NameDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(2 * Look::Gap, 0);
    }
};

void setUpColumns(QTableView* table)
{
    QHeaderView* columns = table->horizontalHeader();
    columns->setHighlightSections(false);
    columns->setMaximumSectionSize(WidestColumn);
    columns->setSectionResizeMode(QHeaderView::ResizeToContents);
    columns->setSectionResizeMode(PluginStatusModel::ReasonColumn, QHeaderView::Stretch);
    columns->setMinimumHeight(RowHeight - Look::Gap);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(RowHeight);
}

} // namespace

PluginsView::PluginsView(QWidget* parent)
    : QWidget(parent)
    , m_faults(Look::wrappedLabel(Look::NormalText, QFont::DemiBold))
    , m_model(new PluginStatusModel(this))
{
    Look::makeSelectable(m_faults);
    auto* panel = new Surface;
    auto* inside = new QVBoxLayout(panel);
    inside->setContentsMargins(Look::Gap * 2, Look::Gap, Look::Gap * 2, Look::Gap);
    inside->addWidget(makeTable());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Look::Gap);
    layout->addWidget(m_faults);
    layout->addWidget(panel, 1);
    keepTranslated(this, [this] { refresh(); });
}

void PluginsView::refresh()
{
    const auto* container = dynamic_cast<PluginContainer*>(Startup::GetPluginContainer());
    m_model->setPlugins(container ? container->GetPluginStatus() : PluginStatusList());
    showFaults(container ? container->GetConfigurationFaults() : ConfigurationFaultList());
}

void PluginsView::showFaults(const ConfigurationFaultList& faults)
{
    QStringList lines;
    QStringList details;
    for (const ConfigurationFault& fault : faults) {
        lines.append(describeFault(fault));
        details.append(QDir::toNativeSeparators(fault.path) + QLatin1Char('\n') + fault.message);
    }
    m_faults->setText(lines.join(QLatin1Char('\n')));
    m_faults->setToolTip(details.join(QLatin1Char('\n')).trimmed());
    m_faults->setVisible(!faults.isEmpty());
}

void PluginsView::showEvent(QShowEvent* event)
{
    // A plugin may have been loaded on demand in the meantime.
    refresh();
    QWidget::showEvent(event);
}

QTableView* PluginsView::makeTable()
{
    auto* table = new QTableView;
    table->setModel(m_model);
    table->setItemDelegateForColumn(PluginStatusModel::NameColumn, new NameDelegate(table));
    table->setItemDelegateForColumn(PluginStatusModel::StateColumn, new BadgeDelegate(table));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setTabKeyNavigation(false);
    table->setFrameShape(QFrame::NoFrame);
    table->setHorizontalHeader(new FlatHeader(table));
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setMinimumHeight(RowHeight * 4);
    setUpColumns(table);
    keepTranslated(table, [table] { table->setAccessibleName(text("IDS_PLUGINS_TITLE")); });
    return table;
}
