#pragma once

#include "ModemReport.h"
#include "support/Page.h"

#include <QVector>

class ElidedLabel;
class QGridLayout;

/// Captions with values below them, in as many columns as there is room for.
class FactsPanel : public Surface
{
    Q_OBJECT

public:
    explicit FactsPanel(QWidget* parent = nullptr);

    void showFacts(const Facts& facts);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange(int columns);

    QGridLayout* m_grid;
    int m_columns = 0;
    QVector<QWidget*> m_cells;
    QVector<ElidedLabel*> m_values;
};
