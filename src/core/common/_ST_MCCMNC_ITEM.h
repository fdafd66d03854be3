#pragma once

#include <QString>

/// The names of a mobile network's operator.
struct _ST_MCCMNC_ITEM
{
    QString shortdescr; ///< shown in the status bar
    QString fulldescr;
    QString descr;  ///< the operator's region
    QString langid; ///< key of the translated short name in the status bar's language files; may be empty
};
