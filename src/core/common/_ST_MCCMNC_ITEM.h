#pragma once

#include <QString>

/// The names of a mobile network's operator.
struct _ST_MCCMNC_ITEM
{
    QString shortdescr; ///< what the status bar shows
    QString fulldescr;
    QString descr;  ///< of the region that the operator belongs to
    QString langid; ///< of the translated short name in the status bar's language files; empty for none
};
