#include "Change/CurrentLanguage.h"

#include "common/CommonUtils.h"

#include <QMutex>
#include <QMutexLocker>

namespace {

QMutex stateMutex;

struct State
{
    QString name = QStringLiteral("en-us");
    QString shortcutSwitch = QStringLiteral("true");
};

State& state()
{
    static State current;
    return current;
}

} // namespace

QString CurrentLanguage::name()
{
    const QMutexLocker locker(&stateMutex);
    return state().name;
}

void CurrentLanguage::setName(const QString& name)
{
    const QMutexLocker locker(&stateMutex);
    state().name = name;
}

bool CurrentLanguage::hasShortcuts()
{
    const QMutexLocker locker(&stateMutex);
    return state().shortcutSwitch != QLatin1String("false");
}

void CurrentLanguage::readShortcutSwitch()
{
    const QString value =
        CommonUtils::GetSettings(QStringLiteral("system"), QStringLiteral("EnableShortCut"));
    const QMutexLocker locker(&stateMutex);
    state().shortcutSwitch = value;
}
