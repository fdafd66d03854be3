#include "MessageBrowser.h"

#include "MessageText.h"
#include "common/CommonUtils.h"
#include "support/Look.h"
#include "support/Text.h"

#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>

namespace {

void openLink(const QUrl& target)
{
    const QStringList schemes{QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("ftp"),
                              QStringLiteral("mailto")};
    if (schemes.contains(target.scheme()))
        CommonUtils::OpenUrl(urlToOpen(target.toString(QUrl::FullyEncoded)));
}

} // namespace

void prepareBrowser(QTextBrowser* browser)
{
    browser->setOpenLinks(false);
    browser->setFrameShape(QFrame::NoFrame);
    browser->document()->setDocumentMargin(0);
    keepTranslated(browser, [browser] { browser->setAccessibleName(text("IDS_SMS_MESSAGE")); });
    QObject::connect(browser, &QTextBrowser::anchorClicked, browser, openLink);
}

void colorLinks(QTextBrowser* browser)
{
    const QColor color = Look::toneColor(Look::Tone::Info, browser->palette());
    browser->document()->setDefaultStyleSheet(QStringLiteral("a { color: %1 }").arg(color.name()));
}
