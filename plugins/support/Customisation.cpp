#include "support/Customisation.h"

#include "common/CommonUtils.h"

#include <QDynamicPropertyChangeEvent>
#include <QWidget>

namespace {

constexpr char Count[] =
    "customisations"; ///< property of the main window; plugins in other libraries see it change

} // namespace

Customisation::Customisation(QObject* parent)
    : QObject(parent)
{
    if (QWidget* const window = CommonUtils::GetMainWindow())
        window->installEventFilter(this);
}

void Customisation::report(QWidget* mainWindow)
{
    mainWindow->setProperty(Count, mainWindow->property(Count).toInt() + 1);
}

bool Customisation::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::DynamicPropertyChange &&
        static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName() == Count)
        Q_EMIT applied();
    return false;
}
