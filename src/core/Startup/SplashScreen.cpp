// The splash screen, a separate program that runs until it is closed.
#include "Startup/Startup.h"

#include "common/CommonUtils.h"
#include "common/Log.h"
#include "common/files/XmlFile_p.h"
#include "common/settings/Setting_p.h"
#include "platform/Program_p.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

QProcess* Startup::m_pSplashScreen = nullptr;
QTime Startup::m_pSplashStartAt;

namespace {

constexpr QStringView SplashElement = u"splash";
constexpr QStringView FunctionElement = u"function";

bool readSwitch(QXmlStreamReader& reader)
{
    return reader.readElementText() == QLatin1String("true");
}

} // namespace

bool Startup::haveSplashScreen()
{
    bool have = true;
    QFile file(CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/XFramePlugin/Config.xml"));
    if (file.open(QIODevice::ReadOnly)) {
        QXmlStreamReader reader(&file);
        if (XmlFile::moveTo(reader, FunctionElement) &&
            XmlFile::moveTo(reader, SplashElement, FunctionElement))
            have = readSwitch(reader);
        const QString operatorName = Settings::Operator.value();
        if (operatorName != QLatin1String("common"))
            operatorHaveSplashScreen(reader, operatorName, have);
        XmlFile::logFault(reader, file.fileName(), XmlFile::Texts());
    } else {
        have = false;
    }
    LOG_DEBUG("%s: %s: splash=%d", LOG_FILE, LOG_FUNCTION, have ? 1 : 0);
    return have;
}

void Startup::operatorHaveSplashScreen(QXmlStreamReader& reader, QString operatorName, bool& have)
{
    while (XmlFile::moveTo(reader, u"customize")) {
        const QXmlStreamAttributes attributes = reader.attributes();
        if (attributes.value(QLatin1String("name")) != operatorName)
            continue;
        const bool isForDevice = !attributes.value(QLatin1String("device")).isEmpty();
        if (XmlFile::moveTo(reader, SplashElement))
            have = readSwitch(reader);
        if (isForDevice) // the modem is not known yet
            have = false;
        return;
    }
}

void Startup::showSplashScreen()
{
    const QString folder = QCoreApplication::applicationDirPath();
    const QString program = QStringLiteral("XStartScreen.exe"); // under this name on every system
    CloseSplashScreen();                                        // there is only one
    if (!QFile::exists(folder + QLatin1Char('/') + program))
        return;
    m_pSplashScreen = new QProcess;
    m_pSplashScreen->start(
        Platform::programBeside(folder, program),
        {folder + QLatin1String("/plugins/XFramePlugin/splash"), folder + QLatin1String("/plugins")});
}

void Startup::showSplashStartupTime()
{
    showSplashScreen();
    m_pSplashStartAt = QTime::currentTime();
}

int Startup::GetSplashScreen()
{
    constexpr int dayMs = 24 * 60 * 60 * 1000;
    const int elapsed = m_pSplashStartAt.msecsTo(QTime::currentTime());
    return elapsed < 0 ? elapsed + dayMs : elapsed; // started before midnight
}

void Startup::CloseSplashScreen()
{
    if (!m_pSplashScreen)
        return;
    m_pSplashScreen->close(); // kills the program, which therefore cannot delay this
    LOG_DEBUG("%s: %s: closed XStartScreen on Win", LOG_FILE, LOG_FUNCTION);
    delete m_pSplashScreen;
    m_pSplashScreen = nullptr;
}

bool Startup::hideDockIcon(QString path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return true;
    QXmlStreamWriter writer(&file);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("dict"));
    writer.writeTextElement(QStringLiteral("key"), QStringLiteral("LSUIElement"));
    writer.writeTextElement(QStringLiteral("string"), QStringLiteral("4"));
    writer.writeEndElement();
    return true;
}
