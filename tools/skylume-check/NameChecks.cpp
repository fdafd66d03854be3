// Checks of names that occur in several files: of modems, groups, operators, languages and skins.
#include "Checks.h"

#include "Findings.h"
#include "Installation.h"

#include <QDir>
#include <QFile>
#include <QSettings>

namespace {

/// What a name stands for.
enum class Namespace { Modem, Group, Operator };

struct XmlName
{
    Format format;
    const char* element;
    const char* attribute;
    Namespace space;
};

constexpr XmlName XmlNames[] = {
    {Format::PluginConfiguration, "device", "name", Namespace::Modem},
    {Format::PluginConfiguration, "GID", "name", Namespace::Group},
    {Format::PluginConfiguration, "customize", "name", Namespace::Operator},
    {Format::MainWindow, "customize", "name", Namespace::Operator},
    {Format::MainWindow, "customize", "device", Namespace::Modem},
};

/// Compares the spelling of names.
class Spelling
{
public:
    explicit Spelling(Findings& findings)
        : m_findings(findings)
    {
    }

    /// The first occurrence of a name decides its spelling.
    void check(Namespace space, const QString& name, const QString& file, qint64 line)
    {
        const QPair<int, QString> key(int(space), name.toCaseFolded());
        if (!m_first.contains(key))
            m_first.insert(key, {name, QStringLiteral("%1:%2").arg(file).arg(line)});
        const auto [usual, place] = m_first.value(key);
        if (!name.isEmpty() && name != usual)
            m_findings.add(Kind::NameInOtherCase, file, line,
                           QStringLiteral("\"%1\" is \"%2\" in %3").arg(name, usual, place));
    }

private:
    Findings& m_findings;
    QHash<QPair<int, QString>, QPair<QString, QString>> m_first; ///< name and place
};

void checkModemNames(const IniLines& modems, Spelling& spelling)
{
    const QString modem = QStringLiteral("modem ");
    for (const IniLine& line : modems.lines()) {
        if (line.key.isEmpty() && line.section.startsWith(modem))
            spelling.check(Namespace::Modem, line.section.mid(modem.size()), modems.path(), line.line);
        else if (line.key == QLatin1String("gid"))
            spelling.check(Namespace::Group, line.value, modems.path(), line.line);
        else if (line.key == QLatin1String("customize"))
            spelling.check(Namespace::Operator, line.value, modems.path(), line.line);
    }
}

void checkXmlNames(const InstalledXml& file, Spelling& spelling)
{
    for (const XmlName& name : XmlNames) {
        if (name.format != file.format)
            continue;
        for (const int node : file.tree.named(QLatin1String(name.element)))
            spelling.check(name.space, file.tree[node].attribute(QLatin1String(name.attribute)), file.path,
                           file.tree[node].line);
    }
}

/// The condition "operator" of standard configuration files.
void checkConditions(const InstalledXml& file, Spelling& spelling)
{
    for (const int item : file.tree.named(QStringLiteral("item")))
        if (file.tree[item].attribute(QStringLiteral("name")) == QLatin1String("operator"))
            spelling.check(Namespace::Operator, file.tree[item].attribute(QStringLiteral("value")), file.path,
                           file.tree[item].line);
}

/// The first line of a file with this text; 1 if there is none.
qint64 lineWith(const QString& path, const QString& text)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    for (qint64 line = 1; !file.atEnd(); ++line)
        if (QString::fromUtf8(file.readLine()).contains(text))
            return line;
    return 1;
}

/// @return the names of the languages
QSet<QString> checkLanguageTable(const Installation& installation, Findings& findings)
{
    QSet<QString> names;
    const QStringList languages = installation.languages();
    installation.forEach(Format::Languages, [&](const InstalledXml& file) {
        for (const int item : file.tree.named(QStringLiteral("item"))) {
            const QString language = file.tree[item].text;
            names.insert(file.tree[item].attribute(QStringLiteral("lang")));
            if (!languages.contains(language))
                findings.add(
                    Kind::UnknownLanguage, file.path, file.tree[item].line,
                    QStringLiteral("XFramePlugin has no files for the language \"%1\"").arg(language));
        }
    });
    return names;
}

/// The list is read as the application reads it.
void checkLanguageList(const QString& path, const QSet<QString>& names, Findings& findings)
{
    QSettings list(path, QSettings::IniFormat);
    list.beginGroup(QStringLiteral("language"));
    for (const QString& key : list.childKeys()) {
        const QString name = list.value(key).toString();
        if (!names.contains(name))
            findings.add(Kind::UnknownLanguage, path, lineWith(path, key + QLatin1Char('=')),
                         QStringLiteral("LangAreaForShort.xml has no language \"%1\"").arg(name));
    }
}

void checkActiveLanguage(const Installation& installation, Findings& findings)
{
    const IniLine active =
        installation.defaults().value(QStringLiteral("language"), QStringLiteral("active"));
    const bool isKnown =
        active.value.startsWith(QLatin1Char('_')) && installation.languages().contains(active.value.mid(1));
    if (active.line > 0 && !isKnown)
        findings.add(Kind::UnknownLanguage, installation.defaults().path(), active.line,
                     QStringLiteral("XFramePlugin has no files for the language \"%1\"").arg(active.value));
}

} // namespace

void checkNames(const Installation& installation, Findings& findings)
{
    Spelling spelling(findings);
    const IniLine operatorLine =
        installation.defaults().value(QStringLiteral("customize"), QStringLiteral("operator"));
    spelling.check(Namespace::Operator, operatorLine.value, installation.defaults().path(),
                   operatorLine.line);
    checkModemNames(installation.modems(), spelling);
    for (const InstalledXml& file : installation.xmlFiles())
        checkXmlNames(file, spelling);
    installation.forEach(Format::StandardConfiguration,
                         [&](const InstalledXml& file) { checkConditions(file, spelling); });
}

void checkLanguageChoice(const Installation& installation, Findings& findings)
{
    checkActiveLanguage(installation, findings);
    const QSet<QString> names = checkLanguageTable(installation, findings);
    checkLanguageList(installation.path(QStringLiteral("SysConfig.dat")), names, findings);
}

void checkSkins(const Installation& installation, Findings& findings)
{
    const IniLine skin = installation.defaults().value(QStringLiteral("MiniSkin"), QStringLiteral("Name"));
    if (skin.line > 0 && !installation.has(QStringLiteral("skin/%1.qss").arg(skin.value)))
        findings.add(Kind::UnknownSkin, installation.defaults().path(), skin.line,
                     QStringLiteral("there is no skin \"%1\"").arg(skin.value));
    const QStringList sheets =
        QDir(installation.path(QStringLiteral("skin"))).entryList({QStringLiteral("*.qss")}, QDir::Files);
    for (const QString& sheet : sheets) {
        const QString name = sheet.chopped(4);
        if (!installation.has(QStringLiteral("skin/%1/%1_Arabic.qss").arg(name)))
            findings.add(Kind::SkinWithoutMirror, installation.path(QStringLiteral("skin/") + sheet), 1,
                         QStringLiteral("the skin \"%1\" has no right-to-left variant").arg(name));
    }
}
