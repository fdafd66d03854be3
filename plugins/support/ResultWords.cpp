#include "support/ResultWords.h"

#include "support/Text.h"

#include <qrvl.h>

#include <algorithm>
#include <iterator>

namespace {

struct Entry
{
    int result;
    const char* title; ///< identifiers of shared strings
    const char* hint;
};

constexpr Entry Unknown{QRVL_ERROR_FAILED, "IDS_RESULT_FAILED", "IDS_RESULT_FAILED_HINT"};

constexpr Entry Entries[] = {
    {QRVL_ERROR_ARGUMENT, "IDS_RESULT_ARGUMENT", "IDS_RESULT_ARGUMENT_HINT"},
    {QRVL_ERROR_NOT_FOUND, "IDS_RESULT_NOT_FOUND", "IDS_RESULT_NOT_FOUND_HINT"},
    {QRVL_ERROR_NO_DEVICE, "IDS_RESULT_NO_DEVICE", "IDS_RESULT_NO_DEVICE_HINT"},
    {QRVL_ERROR_LIMIT, "IDS_RESULT_BUSY", "IDS_RESULT_BUSY_HINT"},
    {QRVL_ERROR_BUSY, "IDS_RESULT_BUSY", "IDS_RESULT_BUSY_HINT"},
    {QRVL_ERROR_NO_SIM, "IDS_RESULT_NO_SIM", "IDS_RESULT_NO_SIM_HINT"},
    {QRVL_ERROR_LOCKED, "IDS_RESULT_LOCKED", "IDS_RESULT_LOCKED_HINT"},
    {QRVL_ERROR_WRONG_CODE, "IDS_RESULT_WRONG_CODE", "IDS_RESULT_WRONG_CODE_HINT"},
    {QRVL_ERROR_BLOCKED, "IDS_RESULT_BLOCKED", "IDS_RESULT_BLOCKED_HINT"},
    {QRVL_ERROR_NO_COVERAGE, "IDS_RESULT_NO_COVERAGE", "IDS_RESULT_NO_COVERAGE_HINT"},
    {QRVL_ERROR_REFUSED, "IDS_RESULT_REFUSED", "IDS_RESULT_REFUSED_HINT"},
    {QRVL_ERROR_ACCESS_POINT, "IDS_RESULT_ACCESS_POINT", "IDS_RESULT_ACCESS_POINT_HINT"},
    {QRVL_ERROR_ROAMING, "IDS_RESULT_ROAMING", "IDS_RESULT_ROAMING_HINT"},
    {QRVL_ERROR_TIMEOUT, "IDS_RESULT_TIMEOUT", "IDS_RESULT_TIMEOUT_HINT"},
    {QRVL_ERROR_CANCELLED, "IDS_RESULT_CANCELLED", "IDS_RESULT_CANCELLED_HINT"},
    {QRVL_ERROR_SERVICE, "IDS_RESULT_SERVICE", "IDS_RESULT_SERVICE_HINT"},
    {QRVL_ERROR_PERMISSION, "IDS_RESULT_PERMISSION", "IDS_RESULT_PERMISSION_HINT"},
    {QRVL_ERROR_FULL, "IDS_RESULT_FULL", "IDS_RESULT_FULL_HINT"},
    {QRVL_ERROR_UNSUPPORTED, "IDS_RESULT_UNSUPPORTED", "IDS_RESULT_UNSUPPORTED_HINT"},
};

} // namespace

ResultWords resultWords(int result)
{
    const auto* const found = std::find_if(std::begin(Entries), std::end(Entries),
                                           [result](const Entry& entry) { return entry.result == result; });
    const Entry& entry = found == std::end(Entries) ? Unknown : *found;
    return {sharedText(entry.title), sharedText(entry.hint)};
}

QString resultText(int result)
{
    const ResultWords words = resultWords(result);
    return sharedText("IDS_RESULT").arg(words.title, words.hint);
}
