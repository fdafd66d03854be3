#pragma once

#include <QStringView>

/// Whether a text, as a whole, is an address of some kind; see CommonUtils for what each takes. All of them
/// look at each character a few times at most.
namespace Addresses {

bool isEmail(QStringView text);
bool isHttp(QStringView text);
bool isWeb(QStringView text);

/// "http://", "https://" or "ftp://" in either case, then a letter or digit; for the first two an isHttp()
/// text.
bool isUrl(QStringView text);

} // namespace Addresses
