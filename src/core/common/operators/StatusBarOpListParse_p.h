#pragma once

#include "common/StatusBarOpListParse.h"

#include "common/operators/CodeTable_p.h"
#include "common/operators/PrefixTable_p.h"

#include <memory>
#include <new>

/// The tables of the operator lists.
class StatusBarOpListParse::Private
{
public:
    using ItemTable = CodeTable<_ST_MCCMNC_ITEM>;

    std::unique_ptr<ItemTable> networks{new (std::nothrow) ItemTable};  ///< by MCC and MNC joined
    std::unique_ptr<ItemTable> countries{new (std::nothrow) ItemTable}; ///< by MCC
    QString fileName;                                                   ///< of the list that was opened last
    PrefixTable imsiPrefixes;
    CodeTable<QString> codes; ///< names by MCC and MNC joined

    /// The listed names of a network, untranslated.
    _ST_MCCMNC_ITEM findOperator(const QString& mcc, const QString& mnc) const;
};
