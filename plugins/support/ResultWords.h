#pragma once

#include <QString>

/// What a failed request means for the user, in the current language.
struct ResultWords
{
    QString title; ///< what happened
    QString hint;  ///< what to do
};

/// @param result of a request of qrvl.h, except QRVL_OK; unknown results are those of QRVL_ERROR_FAILED
ResultWords resultWords(int result);
