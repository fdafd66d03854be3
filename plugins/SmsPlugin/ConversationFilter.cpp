#include "ConversationFilter.h"

#include "Shown.h"

#include <algorithm>

ConversationFilter::ConversationFilter(ConversationModel* model)
    : QSortFilterProxyModel(model)
    , m_model(model)
{
    setSourceModel(model);
    sort(0);
}

void ConversationFilter::setSearch(const QString& search)
{
    if (m_search == search)
        return;
    m_search = search;
    invalidateFilter();
}

const Conversation& ConversationFilter::conversation(int row) const
{
    return m_model->conversation(mapToSource(index(row, 0)).row());
}

int ConversationFilter::firstWithMessages() const
{
    int row = 0;
    while (row < rowCount() && conversation(row).messages.isEmpty())
        ++row;
    return row < rowCount() ? row : -1;
}

bool ConversationFilter::isHit(const Message& message) const
{
    return message.text.contains(m_search, Qt::CaseInsensitive) ||
           shownAddress(message.address).contains(m_search, Qt::CaseInsensitive);
}

bool ConversationFilter::filterAcceptsRow(int row, const QModelIndex&) const
{
    const Conversation& shown = m_model->conversation(row);
    const auto contains = [this](const QString& text) {
        return text.contains(m_search, Qt::CaseInsensitive);
    };
    return contains(m_model->draft(shown)) || contains(shownAddress(shown.address)) ||
           std::any_of(shown.messages.begin(), shown.messages.end(),
                       [this](const Message& message) { return isHit(message); });
}

bool ConversationFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const Messages& leftOnes = m_model->conversation(left.row()).messages;
    const Messages& rightOnes = m_model->conversation(right.row()).messages;
    if (leftOnes.isEmpty() || rightOnes.isEmpty())
        return leftOnes.isEmpty() && !rightOnes.isEmpty();
    return isNewer(leftOnes.first(), rightOnes.first());
}

const Message* ConversationFilter::nextHit(const QString& key) const
{
    const Message* first = nullptr;
    bool isBehind = false;
    for (int row = 0; row < rowCount(); ++row) {
        for (const Message& message : conversation(row).messages) {
            const bool found = isHit(message);
            if (found && isBehind)
                return &message;
            if (found && !first)
                first = &message;
            isBehind |= message.key == key;
        }
    }
    return first;
}
