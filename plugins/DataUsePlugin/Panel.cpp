#include "Panel.h"

#include "support/AccessibleRole.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QLabel>
#include <QVBoxLayout>

QVBoxLayout* makePanel(QWidget* panel, const char* title, QWidget* corner)
{
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(Look::Gap * 2, Look::Gap * 2, Look::Gap * 2, Look::Gap * 2);
    column->setSpacing(Look::Gap);
    auto* line = new QHBoxLayout;
    QLabel* const heading = Look::label(QString(), Look::HeadingText, QFont::DemiBold);
    setAccessibleRole(heading, QAccessible::Heading);
    line->addWidget(heading, 1);
    if (corner)
        line->addWidget(corner);
    column->addLayout(line);
    keepTranslated(heading, [=] { heading->setText(text(title)); });
    return column;
}
