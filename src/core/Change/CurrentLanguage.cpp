#include "Change/CurrentLanguage_p.h"

#include "Change/LanguageFiles.h"
#include "common/settings/Setting_p.h"

#include <QMutex>
#include <QMutexLocker>

namespace {

QMutex stateMutex;

struct State
{
    QString name = LanguageFiles::Fallback;
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
    state().name = QString(name.constData(), name.size()); // a copy: unloading a library frees literals
}

bool CurrentLanguage::hasShortcuts()
{
    const QMutexLocker locker(&stateMutex);
    return state().shortcutSwitch != QLatin1String("false");
}

void CurrentLanguage::readShortcutSwitch()
{
    const QString value = Settings::EnableShortCut.value();
    const QMutexLocker locker(&stateMutex);
    state().shortcutSwitch = value;
}
