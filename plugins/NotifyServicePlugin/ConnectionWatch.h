#pragma once

#include <QHash>

/// Notices that a connection was lost: a modem was removed or rejected, or it is no longer registered in a network.
class ConnectionWatch
{
public:
    /// Compares the attached modems with those of the previous call; the first call never reports a loss.
    /// GUI thread.
    /// @return whether a connection was lost in between
    bool hasLostOne();

private:
    QHash<quint32, bool> m_isRegistered; ///< by modem
};
