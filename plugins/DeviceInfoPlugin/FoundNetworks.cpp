#include "FoundNetworks.h"

#include <algorithm>

namespace {

/// The fields of a line, in order.
enum Field { Code, State, Technology, Name, FieldCount };

/// The usable ones first; other states are last.
const QStringList& statesInOrder()
{
    static const QStringList states = {QStringLiteral("current"), QStringLiteral("available"),
                                       QStringLiteral("unknown"), QStringLiteral("forbidden")};
    return states;
}

int rankOf(const FoundNetwork& network)
{
    const int rank = statesInOrder().indexOf(network.state);
    return rank < 0 ? statesInOrder().size() : rank;
}

bool isBefore(const FoundNetwork& left, const FoundNetwork& right)
{
    const int leftRank = rankOf(left);
    const int rightRank = rankOf(right);
    return leftRank != rightRank ? leftRank < rightRank : left.code < right.code;
}

/// The same network in another technology is added to it; the better state applies.
void add(const FoundNetwork& network, QVector<FoundNetwork>& networks)
{
    const auto known = std::find_if(networks.begin(), networks.end(), [&](const FoundNetwork& candidate) {
        return candidate.code == network.code;
    });
    if (known == networks.end()) {
        networks.append(network);
        return;
    }
    known->technologies += network.technologies;
    known->technologies.removeDuplicates();
    if (rankOf(network) < rankOf(*known))
        known->state = network.state;
}

} // namespace

QVector<FoundNetwork> readNetworks(const QString& lines)
{
    QVector<FoundNetwork> networks;
    for (const QString& line : lines.split(QLatin1Char('\n'))) {
        const QStringList fields = line.split(QLatin1Char('\t'));
        if (fields.size() < FieldCount || fields[Code].isEmpty())
            continue;
        const QString& technology = fields[Technology];
        add({fields[Code], fields[State], technology.isEmpty() ? QStringList() : QStringList(technology),
             fields[Name]},
            networks);
    }
    std::sort(networks.begin(), networks.end(), isBefore);
    return networks;
}
