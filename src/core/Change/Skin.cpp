// The style sheet of the application.
#include "Change/Change.h"

#include "Change/WinClassic.h"
#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/settings/Setting_p.h"

#include <QApplication>
#include <QFile>
#include <QTextStream>

namespace {

QString& lastStyleSheet()
{
    static QString sheet;
    return sheet;
}

QString joinedLines(QFile& file)
{
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    QString text;
    QString line;
    while (stream.readLineInto(&line))
        text += line;
    return text;
}

/// The right-to-left variant is in the skin's own folder, the other one beside that folder.
QString miniSkinFile()
{
    const QString name = Settings::MiniSkinName.value();
    const QString base = CommonUtils::GetPluginLibraryPath() + QLatin1String("/skin/") + name;
    if (QGuiApplication::layoutDirection() == Qt::RightToLeft)
        return base + QLatin1Char('/') + name + QLatin1String("_Arabic.qss");
    return base + QLatin1String(".qss");
}

} // namespace

bool Change::ChangSkin(QApplication* app, QString const& path, _enStyleState, bool reload)
{
    if (!app)
        return false;
    QString& sheet = lastStyleSheet();
    if (!reload && !sheet.isEmpty()) {
        app->setStyleSheet(sheet);
        return true;
    }
    sheet.clear();
    QFile file(path);
    if (!file.exists() || !file.open(QIODevice::ReadOnly)) {
        LOG_DEBUG("%s: %s: File does not exist or failed to open %s", LOG_FILE, LOG_FUNCTION,
                  qUtf8Printable(path));
        return false;
    }
    QApplication::setStyle(new WinClassic);
    sheet = joinedLines(file);
    app->setStyleSheet(sheet);
    return true;
}

void Change::LoadQss(_enStyleState state, bool reload)
{
    if (CommonUtils::IsMiniMode())
        ChangSkin(qobject_cast<QApplication*>(QCoreApplication::instance()), miniSkinFile(), state, reload);
}

void Change::setStyleSheetStyle(QApplication*, _enStyleState) {}

QString Change::GetSettingDefaultSkin()
{
    return {};
}

void Change::SetSettingDefaultSkin(QString) {}
