#include "Schema.h"

#include <algorithm>

namespace {

template <typename Item>
const Item* findNamed(const QVector<Item>& items, const QString& name)
{
    const auto found =
        std::find_if(items.cbegin(), items.cend(), [&name](const Item& item) { return item.name == name; });
    return found == items.cend() ? nullptr : &*found;
}

} // namespace

bool SchemaValue::allows(const QString& text) const
{
    if (!words.isEmpty())
        return words.contains(text);
    return pattern.isEmpty() || wholePattern.match(text).hasMatch();
}

QString SchemaValue::description() const
{
    return words.isEmpty() ? QStringLiteral("of the form %1").arg(pattern)
                           : words.join(QStringLiteral(" or "));
}

const SchemaElement* SchemaSlot::find(const QString& name) const
{
    return findNamed(elements, name);
}

const SchemaAttribute* SchemaType::attribute(const QString& name) const
{
    return findNamed(attributes, name);
}
