#pragma once

#include <QString>

/// Texts that were written but not sent, one for each recipient. They are encrypted in the user's settings, so that copies of
/// these do not reveal them; only this computer can decrypt them. GUI thread only.
namespace Drafts {

struct Draft
{
    QString recipient; ///< may be empty
    QString text;
};

/// The draft for a recipient; without text if there is none.
Draft find(const QString& recipient);

/// The draft that was stored last; without text if there is none.
Draft latest();

/// Stores a draft and replaces an earlier one for the recipient. A draft without text only removes the earlier one.
void keep(const Draft& draft);

} // namespace Drafts
