#pragma once

#include <QString>

/// Texts that were written but not sent, one for each recipient, kept in the user's settings.
namespace Drafts {

struct Draft
{
    QString recipient; ///< may be empty
    QString text;
};

/// The draft for a recipient; without text if there is none.
Draft find(const QString& recipient);

/// The draft that was kept last; without text if there is none.
Draft latest();

/// Keeps a draft in place of an earlier one for the recipient. One without text is removed.
void keep(const Draft& draft);

} // namespace Drafts
