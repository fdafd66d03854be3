#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

struct Modem;

/// What was lost between two looks at the modems.
struct ConnectionLoss
{
    /// A modem was removed or rejected, or it has lost its network or its connection to the Internet.
    bool isAny = false;

    /// The names of modems that were connected to the Internet and no longer are, although nobody disconnected them. A
    /// modem that is pulled out while it is connected is among them, because a loose plug looks the same.
    QStringList offline;
};

/// Notices lost connections. GUI thread.
class ConnectionWatch
{
public:
    /// Compares the attached modems with those of the previous call; the first call never finds a loss.
    ConnectionLoss look();

private:
    struct State
    {
        QString name;
        bool isRegistered = false;
        bool isOnline = false;      ///< connected to the Internet, also while that is changing
        bool isEndedByUser = false; ///< the latest connection, here or in another program; or there was none
    };

    State read(const Modem& modem) const;

    QHash<quint32, State> m_states; ///< by modem
};
