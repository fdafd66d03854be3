#pragma once

#include <QStringView>

/// Whether a whole text is an address of some kind; the rules are documented in CommonUtils. All tests run in
/// linear time.
namespace Addresses {

bool isEmail(QStringView text);
bool isHttp(QStringView text);
bool isWeb(QStringView text);

/// "http://", "https://" or "ftp://" in either case, followed by a letter or digit. With the first two the
/// text has to pass isHttp() as well.
bool isUrl(QStringView text);

} // namespace Addresses
