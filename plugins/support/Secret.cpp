#include "support/Secret.h"

#include "common/CommonUtils.h"
#include "common/SafeMemory.h"

#include <QLineEdit>

namespace {

using Convert = void (*)(const char*, const char*, char*&);

/// Encrypts or decrypts, and leaves no copy behind.
QByteArray converted(Convert convert, const QByteArray& input, const QByteArray& passPhrase)
{
    char* result = nullptr;
    convert(input.constData(), passPhrase.constData(), result);
    const QByteArray output(result);
    CommonUtils::CryptLocalFree(result);
    return output;
}

void wipe(const QByteArray& bytes)
{
    const auto size = unsigned(bytes.size());
    if (size > 0)
        QRVL_memset(const_cast<char*>(bytes.constData()), size, 0, size);
}

} // namespace

QString protectedText(const QString& plain, const QByteArray& passPhrase)
{
    if (plain.isEmpty())
        return {};
    const QByteArray bytes = plain.toUtf8();
    const QByteArray digits = converted(CommonUtils::Encrypt, bytes, passPhrase);
    wipe(bytes);
    return QString::fromLatin1(digits);
}

QString plainText(const QString& protectedText, const QByteArray& passPhrase)
{
    if (protectedText.isEmpty())
        return {};
    const QByteArray bytes = converted(CommonUtils::Decrypt, protectedText.toLatin1(), passPhrase);
    const QString plain = QString::fromUtf8(bytes);
    wipe(bytes);
    return plain;
}

void wipe(QString& secret)
{
    const auto size = unsigned(secret.size()) * unsigned(sizeof(QChar));
    if (size > 0)
        QRVL_memset(const_cast<QChar*>(secret.constData()), size, 0, size);
    secret.clear();
}

void wipe(QLineEdit* field)
{
    QString text = field->text(); // shares the characters of the field
    wipe(text);
    field->clear();
}
