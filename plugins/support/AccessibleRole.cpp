#include "support/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QLabel>
#include <QVariant>

namespace {

constexpr const char* RoleProperty = "accessibleRole";

class RoleInterface : public QAccessibleWidget
{
public:
    RoleInterface(QWidget* widget, QAccessible::Role role)
        : QAccessibleWidget(widget, role)
    {
    }

    QString text(QAccessible::Text part) const override
    {
        const auto* const label = qobject_cast<const QLabel*>(widget());
        if (part == QAccessible::Name && label && label->accessibleName().isEmpty())
            return label->text();
        return QAccessibleWidget::text(part);
    }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object)
{
    auto* const widget = qobject_cast<QWidget*>(object);
    const QVariant role = widget ? widget->property(RoleProperty) : QVariant();
    return role.isValid() ? new RoleInterface(widget, QAccessible::Role(role.toInt())) : nullptr;
}

/// Qt must not call this library after it has been unloaded.
class Factory
{
public:
    Factory() { QAccessible::installFactory(makeInterface); }
    ~Factory() { QAccessible::removeFactory(makeInterface); }

    Q_DISABLE_COPY_MOVE(Factory)
};

} // namespace

void setAccessibleRole(QWidget* widget, QAccessible::Role role)
{
    static const Factory factory;
    widget->setProperty(RoleProperty, int(role));
}
