#include "Drafts.h"

#include "Message.h"
#include "common/CommonUtils.h"
#include "support/Secret.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSysInfo>

namespace {

constexpr QLatin1String Section("messages");
constexpr QLatin1String Key("drafts");
constexpr QLatin1String Recipient("to");
constexpr QLatin1String Text("text");

/// A pass phrase that differs between computers and is not in the settings. It need not be kept from the user's programs.
QByteArray passPhrase()
{
    const QByteArray computer = "drafts " + QSysInfo::machineUniqueId();
    return QCryptographicHash::hash(computer, QCryptographicHash::Sha256).toBase64();
}

/// The latest draft first.
QJsonArray load()
{
    QString plain = plainText(CommonUtils::GetUserSettings(Section, Key), passPhrase());
    QByteArray json = plain.toUtf8();
    const QJsonArray drafts = QJsonDocument::fromJson(json).array();
    wipe(plain);
    wipe(json);
    return drafts;
}

void save(const QJsonArray& drafts)
{
    QByteArray json = drafts.isEmpty() ? QByteArray() : QJsonDocument(drafts).toJson(QJsonDocument::Compact);
    QString plain = QString::fromUtf8(json);
    CommonUtils::SetSettings(Section, Key, protectedText(plain, passPhrase()));
    wipe(plain);
    wipe(json);
}

Draft draftFrom(const QJsonValue& value)
{
    return {value[Recipient].toString(), value[Text].toString()};
}

bool isFor(const QJsonValue& value, const QString& recipient)
{
    return addressKey(value[Recipient].toString()) == addressKey(recipient);
}

} // namespace

Draft Drafts::find(const QString& recipient) const
{
    const QJsonArray drafts = load();
    for (const QJsonValue& value : drafts) {
        if (isFor(value, recipient))
            return draftFrom(value);
    }
    return {recipient, {}};
}

Draft Drafts::latest() const
{
    return draftFrom(load().first());
}

DraftsByKey Drafts::byRecipient() const
{
    DraftsByKey found;
    const QJsonArray drafts = load();
    for (const QJsonValue& value : drafts) {
        const Draft draft = draftFrom(value);
        if (!draft.recipient.isEmpty())
            found.insert(addressKey(draft.recipient), draft);
    }
    return found;
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
    save(kept);
    Q_EMIT changed();
}
