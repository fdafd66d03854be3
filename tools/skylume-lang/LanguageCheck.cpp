#include "LanguageCheck.h"

#include "Change/LanguageFiles.h"
#include "Change/Shortcut_p.h"
#include "LanguageFile.h"
#include "MenuFile.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace {

/// Prefix of the entries of menus that are built in code, not from a menu definition file.
constexpr QLatin1String MenuPrefix("IDS_MENU");

using Files = QVector<LanguageFile>;

void note(Faults& faults, const LanguageFile& file, const LanguageText& entry, const QString& message)
{
    faults.append({file.path, entry.line, QStringLiteral("\"%1\" %2").arg(entry.id, message)});
}

QStringList languageFiles(const QStringList& paths, Faults& faults)
{
    QStringList files;
    for (const QString& path : paths) {
        QDirIterator below(path, {QLatin1Char('*') + LanguageFiles::Suffix}, QDir::Files,
                           QDirIterator::Subdirectories);
        if (!QFileInfo(path).isDir())
            files.append(path);
        else if (!below.hasNext())
            faults.append({path, 1, QStringLiteral("there are no language files in this folder")});
        while (below.hasNext())
            files.append(below.next());
    }
    files.sort();
    return files;
}

// ---- One file

Shortcut::Keys shortcutOf(const LanguageFile& file, const LanguageText& entry)
{
    const int position = Shortcut::find(entry.text, file.language);
    return position > 0 ? Shortcut::parse(entry.text.mid(position)) : Shortcut::Keys();
}

void checkShortcuts(const LanguageFile& file, Faults& faults)
{
    for (const LanguageText& entry : file.texts) {
        const Shortcut::Keys keys = shortcutOf(file, entry);
        if (!keys.isKnown && !keys.text.isEmpty())
            note(faults, file, entry, QStringLiteral("ends with an unknown shortcut, \"%1\"").arg(keys.text));
    }
}

void checkMenu(const LanguageFile& file, const MenuTexts& menu, Faults& faults)
{
    QMap<int, const LanguageText*> owners; // by shortcut
    for (const LanguageText& entry : file.texts) {
        const Shortcut::Keys keys = menu.ids.contains(entry.id) ? shortcutOf(file, entry) : Shortcut::Keys();
        if (!keys.isKnown)
            continue;
        const LanguageText* owner = owners.value(keys.code);
        if (owner && owner->id != entry.id)
            note(faults, file, entry,
                 QStringLiteral("has the shortcut %1 of \"%2\" in line %3, and both are in the menu \"%4\"")
                     .arg(keys.text, owner->id)
                     .arg(owner->line)
                     .arg(menu.name));
        owners.insert(keys.code, &entry);
    }
}

/// The menus of the definition files in the file's folder, and one menu of all other menu texts.
QVector<MenuTexts> menusFor(const LanguageFile& file)
{
    QVector<MenuTexts> menus = readMenus(QFileInfo(file.path).path());
    MenuTexts others{MenuPrefix, {}};
    for (const LanguageText& entry : file.texts) {
        const auto hasText = [&entry](const MenuTexts& menu) {
            return menu.ids.contains(entry.id);
        };
        if (entry.id.startsWith(MenuPrefix) && std::none_of(menus.begin(), menus.end(), hasText))
            others.ids.insert(entry.id);
    }
    menus.append(others);
    return menus;
}

// ---- A file against the reference

QSet<QString> placeholders(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("%L?[0-9]{1,2}"));
    QSet<QString> found;
    for (auto matches = pattern.globalMatch(text); matches.hasNext();)
        found.insert(matches.next().captured());
    return found;
}

QString listed(QSet<QString> words)
{
    QStringList sorted(words.begin(), words.end());
    sorted.sort();
    return sorted.isEmpty() ? QStringLiteral("none") : sorted.join(QStringLiteral(", "));
}

void compareTexts(const LanguageFile& file, const LanguageText& entry, const LanguageFile& reference,
                  const LanguageText& model, Faults& faults)
{
    const QSet<QString> expected = placeholders(model.text);
    const QSet<QString> present = placeholders(entry.text);
    if (present != expected)
        note(faults, file, entry,
             QStringLiteral("has the placeholders %1, the reference has %2")
                 .arg(listed(present), listed(expected)));
    const bool hasShortcut = shortcutOf(file, entry).isKnown;
    if (hasShortcut != shortcutOf(reference, model).isKnown)
        note(faults, file, entry,
             hasShortcut ? QStringLiteral("has a shortcut, the reference has none")
                         : QStringLiteral("has no shortcut that can be read, the reference has one"));
}

void compareFiles(const LanguageFile& file, const LanguageFile& reference, Faults& faults)
{
    const LanguageIndex models = indexOf(reference.texts);
    for (const LanguageText& entry : file.texts) {
        const LanguageText* model = models.value(entry.id);
        if (model)
            compareTexts(file, entry, reference, *model, faults);
        else if (!entry.id.isEmpty())
            note(faults, file, entry, QStringLiteral("is unknown to the reference, %1").arg(reference.path));
    }
    const LanguageIndex translations = indexOf(file.texts);
    const qint64 end = file.texts.isEmpty() ? 1 : file.texts.last().line;
    for (const LanguageText& model : reference.texts) {
        if (!translations.contains(model.id))
            faults.append({file.path, end,
                           QStringLiteral("\"%1\" is missing; it is in %2:%3")
                               .arg(model.id, reference.path)
                               .arg(model.line)});
    }
}

// ---- A plugin's files

void checkPlugin(const Files& files, const QString& reference, const QSet<QString>& languages, Faults& faults)
{
    const auto model = std::find_if(files.begin(), files.end(), [&reference](const LanguageFile& file) {
        return file.language == reference;
    });
    QSet<QString> missing = languages;
    for (const LanguageFile& file : files) {
        missing.remove(file.language);
        checkShortcuts(file, faults);
        for (const MenuTexts& menu : menusFor(file))
            checkMenu(file, menu, faults);
        if (model != files.end() && file.language != reference)
            compareFiles(file, *model, faults);
    }
    if (!missing.isEmpty())
        faults.append(
            {files.first().path, 1,
             QStringLiteral("the plugin has no files for these languages: %1").arg(listed(missing))});
}

} // namespace

Faults checkLanguages(const QStringList& paths, const QString& reference, const QStringList& languages)
{
    Faults faults;
    QMap<QString, Files> plugins; // by folder and name
    for (const QString& path : languageFiles(paths, faults)) {
        const LanguageFile file = LanguageFile::read(path, faults);
        plugins[QFileInfo(path).path() + QLatin1Char('/') + file.plugin].append(file);
    }
    QSet<QString> required(languages.begin(), languages.end());
    required.insert(reference);
    for (const Files& files : qAsConst(plugins))
        checkPlugin(files, reference, required, faults);
    return faults;
}
