#pragma once

#include <QString>

/// What a failed request means for the user, in the current language.
struct ResultWords
{
    QString title; ///< what happened
    QString hint;  ///< what to do
};

/// Describes a failed request. Any thread.
/// @param result enum QRVL_Result, except QRVL_OK; unknown results are described like QRVL_ERROR_FAILED
ResultWords resultWords(int result);

/// The same as two sentences in one line.
QString resultText(int result);
