#include "support/Secret.h"

#include "common/CommonUtils.h"

#include <QLineEdit>

#include <algorithm>
#include <cstddef>

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

/// Through a volatile pointer, because a compiler leaves out writes that nothing reads. Also if the memory is shared.
void overwrite(const void* memory, std::size_t size)
{
    auto* const bytes = static_cast<volatile char*>(const_cast<void*>(memory));
    std::fill(bytes, bytes + size, '\0');
}

} // namespace

QString protectedText(const QString& plain, const QByteArray& passPhrase)
{
    if (plain.isEmpty())
        return {};
    QByteArray bytes = plain.toUtf8();
    const QByteArray digits = converted(CommonUtils::Encrypt, bytes, passPhrase);
    wipe(bytes);
    return QString::fromLatin1(digits);
}

QString plainText(const QString& protectedText, const QByteArray& passPhrase)
{
    if (protectedText.isEmpty())
        return {};
    QByteArray bytes = converted(CommonUtils::Decrypt, protectedText.toLatin1(), passPhrase);
    const QString plain = QString::fromUtf8(bytes);
    wipe(bytes);
    return plain;
}

void wipe(QString& secret)
{
    overwrite(secret.constData(), std::size_t(secret.size()) * sizeof(QChar));
    secret.clear();
}

void wipe(QByteArray& secret)
{
    overwrite(secret.constData(), std::size_t(secret.size()));
    secret.clear();
}

void wipe(QLineEdit* field)
{
    QString text = field->text(); // shares the characters of the field
    wipe(text);
    field->clear();
}
