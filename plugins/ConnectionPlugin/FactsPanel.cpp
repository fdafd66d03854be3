#include "FactsPanel.h"

#include "support/ElidedLabel.h"
#include "support/Text.h"

#include <QGridLayout>
#include <QResizeEvent>

namespace {

constexpr int NarrowPanel = 460; ///< narrower ones have two columns
constexpr int Columns = 3;
constexpr int NarrowColumns = 2;

struct Fact
{
    const char* caption;
    QString Facts::*value;
    QString Facts::*narrowValue; ///< shorter
};

constexpr Fact AllFacts[] = {
    {"IDS_CONN_NETWORK", &Facts::network, &Facts::network},
    {"IDS_CONN_TECHNOLOGY", &Facts::technology, &Facts::technology},
    {"IDS_CONN_SIGNAL", &Facts::signal, &Facts::signal},
    {"IDS_CONN_ROAMING", &Facts::roaming, &Facts::roaming},
    {"IDS_CONN_ADDRESS", &Facts::address, &Facts::address},
    {"IDS_CONN_TRAFFIC", &Facts::traffic, &Facts::volume},
};

/// The last of three columns has the longest values.
int stretchOf(int column, int columns)
{
    return column == Columns - 1 && columns == Columns ? 5 : 3;
}

/// Takes part in columns of the same width.
ElidedLabel* makeLabel()
{
    auto* const label = new ElidedLabel;
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    label->setWordWrap(true);
    return label;
}

QWidget* makeCell(const char* caption, ElidedLabel* value)
{
    auto* cell = new QWidget;
    auto* column = new QVBoxLayout(cell);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    ElidedLabel* const captionLabel = makeLabel();
    Look::makeQuiet(captionLabel);
    Look::setFont(value, Look::NormalText, QFont::DemiBold);
    column->addWidget(captionLabel);
    column->addWidget(value);
    column->addStretch(); // the cell beside it may have more lines
    keepTranslated(captionLabel, [=] {
        captionLabel->setFullText(text(caption));
        value->setAccessibleName(text(caption));
    });
    return cell;
}

} // namespace

FactsPanel::FactsPanel(QWidget* parent)
    : Surface(parent)
    , m_grid(new QGridLayout(this))
{
    for (const Fact& fact : AllFacts) {
        ElidedLabel* const value = makeLabel();
        m_values.append(value);
        m_cells.append(makeCell(fact.caption, value));
    }
    arrange(Columns);
}

void FactsPanel::showFacts(const Facts& facts)
{
    m_facts = facts;
    const bool isNarrow = m_columns == NarrowColumns;
    bool isEmpty = true;
    for (int i = 0; i < m_values.size(); ++i) {
        const QString value = facts.*(isNarrow ? AllFacts[i].narrowValue : AllFacts[i].value);
        m_values[i]->setFullText(value.isEmpty() ? QStringLiteral("\u2013") : value);
        isEmpty = isEmpty && value.isEmpty();
    }
    setVisible(!isEmpty);
}

void FactsPanel::arrange(int columns)
{
    m_columns = columns;
    const bool isNarrow = columns == NarrowColumns; // that takes more height
    const int side = isNarrow ? Look::Gap * 2 : Look::Margin;
    const int margin = isNarrow ? Look::Gap * 3 / 2 : Look::Gap * 2;
    m_grid->setContentsMargins(side, margin, side, margin);
    m_grid->setHorizontalSpacing(isNarrow ? Look::Gap : Look::Margin);
    m_grid->setVerticalSpacing(isNarrow ? Look::Gap : Look::Gap * 2);
    for (int i = 0; i < m_cells.size(); ++i)
        m_grid->addWidget(m_cells[i], i / columns, i % columns);
    for (int column = 0; column < Columns; ++column)
        m_grid->setColumnStretch(column, column < columns ? stretchOf(column, columns) : 0);
}

void FactsPanel::resizeEvent(QResizeEvent* event)
{
    Surface::resizeEvent(event);
    const int columns = event->size().width() < NarrowPanel ? NarrowColumns : Columns;
    if (columns == m_columns)
        return;
    arrange(columns);
    showFacts(m_facts);
}
