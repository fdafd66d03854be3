#pragma once

#include "DataLimit.h"
#include "support/Page.h"

class DataUse;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QSpinBox;

/// Opens the settings with the page LimitPage.
void openLimitPage();

/// The page of the settings dialog: the data limit and the day on which months begin. Choices are stored at once.
class LimitPage : public Page
{
    Q_OBJECT

public:
    /// @param dataUse must outlive the page
    LimitPage(DataUse& dataUse, QWidget* parent);

private:
    QWidget* makeFields();
    QSpinBox* makeNumber(int value, int least, int most);
    void addRow(QGridLayout* rows, const char* caption, QWidget* field, QWidget* more = nullptr);
    void showTexts();
    void store();

    DataUse& m_dataUse;
    QCheckBox* m_isOn;
    QSpinBox* m_amount;
    QComboBox* m_unit;
    QSpinBox* m_warnAt;
    QSpinBox* m_firstDay;
};
