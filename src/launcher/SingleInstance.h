#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

/// Makes sure that a user runs one instance of an installation at a time, as two would show the same modem twice.
/// GUI thread only.
class SingleInstance
{
public:
    /// Becomes the only instance unless there is one. Another one is asked to come to the front.
    SingleInstance();
    ~SingleInstance();

    /// Whether another instance was running.
    bool isSecond() const { return m_isSecond; }

    /// @param raise called from the event loop whenever another instance has been started; the first instance only
    void onStartOfOther(std::function<void()> raise);

private:
    Q_DISABLE_COPY_MOVE(SingleInstance)

    class Link;
    std::unique_ptr<Link> m_link; ///< null in a second instance
    bool m_isSecond = false;
};
