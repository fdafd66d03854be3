#pragma once

#include "Drafts.h"

#include <QTimer>

/// Saves what is being written as a draft, about a second after the last change and when it is destroyed. GUI thread only.
class DraftKeeper
{
public:
    /// @param drafts must outlive this object
    /// @param kept   the draft that the user goes on with
    DraftKeeper(Drafts* drafts, const Draft& kept);
    ~DraftKeeper();

    /// Call it whenever recipient or text may have changed.
    void follow(const Draft& written);

    /// Saves the draft now.
    void keep();

    /// Removes the draft, because its text was sent or is not wanted. Changes from then on are saved again.
    void drop();

private:
    Drafts* m_drafts;
    Draft m_written;
    Draft m_kept;
    QTimer m_delay;
};
