#include "Drafts.h"

#include "Message.h"
#include "common/CommonUtils.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr QLatin1String Section("messages");
constexpr QLatin1String Key("drafts");
constexpr QLatin1String Recipient("to");
constexpr QLatin1String Text("text");

/// The latest draft first.
QJsonArray load()
{
    return QJsonDocument::fromJson(CommonUtils::GetUserSettings(Section, Key).toUtf8()).array();
}

Drafts::Draft draftFrom(const QJsonValue& value)
{
    return {value[Recipient].toString(), value[Text].toString()};
}

bool isFor(const QJsonValue& value, const QString& recipient)
{
    return addressKey(value[Recipient].toString()) == addressKey(recipient);
}

} // namespace

Drafts::Draft Drafts::find(const QString& recipient)
{
    const QJsonArray drafts = load();
    for (const QJsonValue& value : drafts) {
        if (isFor(value, recipient))
            return draftFrom(value);
    }
    return {recipient, {}};
}

Drafts::Draft Drafts::latest()
{
    return draftFrom(load().first());
}

void Drafts::keep(const Draft& draft)
{
    QJsonArray kept;
    if (!draft.text.isEmpty())
        kept.append(QJsonObject{{Recipient, draft.recipient}, {Text, draft.text}});
    const QJsonArray before = load();
    for (const QJsonValue& value : before) {
        if (!isFor(value, draft.recipient))
            kept.append(value);
    }
    if (kept == before)
        return;
    CommonUtils::SetSettings(Section, Key,
                             QString::fromUtf8(QJsonDocument(kept).toJson(QJsonDocument::Compact)));
}
