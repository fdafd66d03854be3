// Checks of single files.
#include "Checks.h"

#include "Change/LanguageFiles.h"
#include "Findings.h"
#include "Installation.h"
#include "Schema.h"
#include "Validation.h"
#include "backends/simulator/SimulatorFile.h"
#include "skylume-lang/LanguageCheck.h"

namespace {

bool isQuoted(const QString& value)
{
    const QString quotes = QStringLiteral("\"'");
    return value.size() > 1 && quotes.contains(value[0]) && value.endsWith(value[0]);
}

/// The section that a message about the simulator's file is about.
qint64 lineOf(const QString& message, const IniLines& file)
{
    const int begin = message.indexOf(QLatin1Char('[')) + 1;
    const QString section = message.mid(begin, message.indexOf(QLatin1Char(']')) - begin);
    return file.value(section, {}).line;
}

} // namespace

void checkLanguageFiles(const Installation& installation, Findings& findings)
{
    const Faults faults = checkLanguages({installation.path(QStringLiteral("plugins"))},
                                         LanguageFiles::Fallback, installation.languages());
    for (const Fault& fault : faults)
        findings.add(Kind::LanguageFile, fault.file, fault.line, fault.message);
}

void checkStructure(const Installation& installation, Findings& findings)
{
    QHash<QString, Schema> schemas;
    Findings found;
    for (const InstalledXml& file : installation.xmlFiles()) {
        const QString name = QLatin1String(file.schema());
        if (!file.tree.error().isEmpty()) {
            found.add(Kind::BrokenXml, file.path, file.tree.errorLine(), file.tree.error());
        } else if (!name.isEmpty()) {
            if (!schemas.contains(name))
                schemas.insert(name, Schema::read(name));
            validate(file.tree, schemas[name], file.path, found);
        }
    }
    findings.addNew(found);
}

void checkOperatorTexts(const Installation& installation, Findings& findings)
{
    const QString attribute = QStringLiteral("langid");
    installation.forEach(Format::OperatorList, [&](const InstalledXml& file) {
        for (int node = 0; node < file.tree.size(); ++node) {
            const QString id = file.tree[node].attribute(attribute);
            if (!id.isEmpty() && !installation.hasText(file.plugin, id))
                findings.add(
                    Kind::UnknownText, file.path, file.tree[node].line,
                    QStringLiteral("no language file of %1 has the text \"%2\"").arg(file.plugin, id),
                    QStringLiteral("The short name is shown."));
        }
    });
}

void checkUnits(const Installation& installation, Findings& findings)
{
    installation.forEach(Format::StandardConfiguration, [&](const InstalledXml& file) {
        if (file.plugin != QLatin1String("StatusBarMgrPlugin"))
            return;
        for (const int item : file.tree.named(QStringLiteral("item"))) {
            const QString value = file.tree[item].attribute(QStringLiteral("value"));
            const bool isBase = file.tree[item].attribute(QStringLiteral("name")) == QLatin1String("base");
            if (isBase && value != QLatin1String("1000") && value != QLatin1String("1024"))
                findings.add(Kind::NoUnit, file.path, file.tree[item].line,
                             QStringLiteral("the factor between units is \"%1\"").arg(value));
        }
    });
}

void checkIniFiles(const Installation& installation, Findings& findings)
{
    const IniLines& modems = installation.modems();
    for (const IniLines* file : {&installation.defaults(), &modems}) {
        for (const int line : file->document().brokenLines())
            findings.add(Kind::BrokenLine, file->path(), line,
                         QStringLiteral("this is neither entry nor section"),
                         file == &modems ? QStringLiteral("The whole file is ignored.") : QString());
        for (const IniLine& line : file->lines())
            if (isQuoted(line.value))
                findings.add(Kind::QuotedValue, file->path(), line.line,
                             QStringLiteral("the value of \"%1\" is in quotes").arg(line.key));
    }
    QStringList errors;
    SimulatorFile::read(modems.document(), errors);
    for (const QString& error : qAsConst(errors))
        if (error.startsWith(QLatin1String("section")))
            findings.add(Kind::ModemFile, modems.path(), lineOf(error, modems), error);
}
