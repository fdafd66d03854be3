#include "support/AccessibleRole.h"

#include "support/Text.h"

#include <QAccessibleWidget>
#include <QLabel>
#include <QVariant>

namespace {

/// Another one in each plugin. Qt asks the library that was loaded last first, and keeps what it answers as long as the
/// widget exists, so a library must not answer for the widgets of another one.
QByteArray roleProperty()
{
    return thisPlugin().toLatin1() + "Role";
}

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
    const QVariant role = widget ? widget->property(roleProperty()) : QVariant();
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
    widget->setProperty(roleProperty(), int(role));
    QAccessibleInterface* const known = QAccessible::queryAccessibleInterface(widget);
    if (known && known->role() != role) // Qt made it when the text was set, for example
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
}
