#include "support/Secret.h"

#include "common/SafeMemory.h"

#include <QLineEdit>

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
