#include "Findings.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace {

struct KindText
{
    Kind kind;
    const char* name;
    const char* effect; ///< what usually happens at run time
    const char* remedy;
};

constexpr KindText KindTexts[] = {
    {Kind::BrokenXml, "broken-xml", "Nothing after this place is read.", "Correct the XML."},
    {Kind::WrongRoot, "wrong-root", "Nothing in the file is read.", "Rename the element."},
    {Kind::UnknownElement, "unknown-element",
     "The element is skipped; what is in it may be read all the same.", "Correct its name, or remove it."},
    {Kind::MisplacedElement, "misplaced-element", "It is not read.", "Move it."},
    {Kind::RepeatedElement, "repeated-element", "Only one of them is read.", "Remove all but one."},
    {Kind::MissingElement, "missing-element", "Its default applies.", "Add it."},
    {Kind::UnknownAttribute, "unknown-attribute", "The attribute is ignored.",
     "Correct its name, or remove it."},
    {Kind::MissingAttribute, "missing-attribute", "It is taken to be empty.", "Add it."},
    {Kind::BadValue, "bad-value", "The value does not have the effect that it seems to have.",
     "Correct the value."},
    {Kind::StrayText, "stray-text", "The text is not read.", "Remove it, or make it a comment."},
    {Kind::DuplicateEntry, "duplicate-entry", "Only one of them has an effect.", "Remove one of them."},
    {Kind::MissingFile, "missing-file", "No plugin is enabled without this file.", "Restore the file."},
    {Kind::UnknownClsid, "unknown-clsid", "The entry is ignored.",
     "List the plugin in config/pluginslib.xml, or correct the clsid; case matters."},
    {Kind::RepeatedEntry, "repeated-entry",
     R"(The repetition has no effect; "remove" takes precedence over "add".)", "Remove one of them."},
    {Kind::UnknownMainPlugin, "unknown-main-plugin",
     "The application has no main window and ends with a message.",
     "Name the clsid of a plugin that the file lists."},
    {Kind::MissingLibrary, "missing-library", "The plugin cannot be loaded.",
     "Install the library in the application's folder, or correct \"url\"."},
    {Kind::AmbiguousLibrary, "ambiguous-library",
     "The first one that can be loaded is taken, in the order in which the system lists them.",
     "Name the libraries so that none begins with the name of another."},
    {Kind::OtherPlatform, "other-platform", "The plugin cannot be loaded.",
     "Install the library for this system."},
    {Kind::NotAPlugin, "not-a-plugin", "The plugin cannot be loaded.",
     "Install the library again, or build it with Q_PLUGIN_METADATA."},
    {Kind::MissingDependency, "missing-dependency", "The plugin cannot be loaded.",
     "Install what is missing beside the library, or build the plugin against this version."},
    {Kind::ConstructorThrows, "constructor-throws", "The plugin cannot be loaded.",
     "Ask the plugin's author: the constructor of its root object must not throw."},
    {Kind::MissingInterface, "missing-interface", "The plugin is loaded, but never initialised or used.",
     "Derive its root object from IBasePlugin, as BasePlugin does."},
    {Kind::UnknownParent, "unknown-parent", "The items are dropped.",
     "Name a sub-menu of the preceding menu, or \"null\"."},
    {Kind::UnknownMenu, "unknown-menu", "The change is dropped.", "Name a menu of this file."},
    {Kind::NothingToRemove, "nothing-to-remove", "Nothing is removed.", "Give the id of an existing entry."},
    {Kind::NoAction, "no-action", "The entry is dropped.", R"(Give it the action "add" or "rem".)"},
    {Kind::BlockRunsOn, "block-runs-on",
     "Applying a block goes on to the end of \"customize\": its operator also gets the blocks that follow.",
     "Use one block per file, or put only what this operator may have as well into the blocks that follow."},
    {Kind::HiddenBlock, "hidden-block",
     "The search for a block takes the first element of this name, so the operator's block begins here.",
     "Name the menu differently from every operator."},
    {Kind::NamelessBlock, "nameless-block", "No operator's search finds the block.",
     "Give it a customisation name in the attribute \"name\"."},
    {Kind::MenuAfterBlocks, "menu-after-blocks",
     "It is read only if a block was applied before; all other modems do not get it.",
     "Move it before \"customize\"."},
    {Kind::UnknownText, "unknown-text", "The text is empty, or the name in the file is shown.",
     "Add the text to the language files of the plugin, or correct the identifier."},
    {Kind::UnknownPlugin, "unknown-plugin", "The button is never there.",
     "Name a plugin of config/pluginslib.xml, or none."},
    {Kind::MissingIcon, "missing-icon", "The button is empty.",
     "Add the picture to the plugin's folder, or correct its name."},
    {Kind::WrongCount, "wrong-count",
     "Items beyond \"count\" are not read; if it is too large, later elements may be read as items.",
     "Set \"count\" to the number of items."},
    {Kind::BrokenLine, "broken-line", "The line is ignored.",
     R"(Write "key = value", "[section]" or a comment, in UTF-8.)"},
    {Kind::QuotedValue, "quoted-value", "The quotes are part of the value.", "Remove the quotes."},
    {Kind::ModemFile, "modem-file", "The whole file is ignored: there are no simulated modems.",
     "Correct the section."},
    {Kind::NameInOtherCase, "name-in-other-case", "Names are case-sensitive: the two are not the same.",
     "Write both in the same way."},
    {Kind::NoUnit, "no-unit", "1024 applies.", "Write 1000 or 1024."},
    {Kind::UnknownLanguage, "unknown-language", "Texts stay empty, or the language is never chosen.",
     "Correct the language, or install its files."},
    {Kind::UnknownSkin, "unknown-skin", "The compact window keeps the look of the normal one.",
     "Name a style sheet of the folder skin, without .qss."},
    {Kind::SkinWithoutMirror, "skin-without-mirror",
     "In right-to-left languages the compact window keeps the look of the normal one.",
     "Add skin/NAME/NAME_Arabic.qss."},
    {Kind::LanguageFile, "language-file", "What is shown in this language is wrong or missing.",
     "Correct the file, see docs/languages.md."},
};

constexpr bool isInOrder()
{
    for (std::size_t i = 0; i < std::size(KindTexts); ++i)
        if (std::size_t(KindTexts[i].kind) != i)
            return false;
    return std::size(KindTexts) == std::size_t(Kind::LanguageFile) + 1;
}
static_assert(isInOrder());

const KindText& textOf(Kind kind)
{
    return KindTexts[std::size_t(kind)];
}

Faults sorted(Faults faults)
{
    std::stable_sort(faults.begin(), faults.end(), [](const Fault& a, const Fault& b) {
        return std::tie(a.file, a.line) < std::tie(b.file, b.line);
    });
    return faults;
}

} // namespace

void Findings::add(Kind kind, const QString& file, qint64 line, const QString& message, const QString& effect)
{
    const KindText& text = textOf(kind);
    m_faults.append({file, line, QStringLiteral("%1 [%2]").arg(message, nameOf(kind)),
                     effect.isEmpty() ? QString::fromUtf8(text.effect) : effect,
                     QString::fromUtf8(text.remedy)});
    m_places.insert({file, line});
}

void Findings::addNew(const Findings& others)
{
    const QSet<QPair<QString, qint64>> taken = m_places;
    for (const Fault& fault : others.m_faults) {
        if (taken.contains({fault.file, fault.line}))
            continue;
        m_faults.append(fault);
        m_places.insert({fault.file, fault.line});
    }
}

Faults Findings::faults() const
{
    return sorted(m_faults);
}

QString Findings::nameOf(Kind kind)
{
    return QLatin1String(textOf(kind).name);
}
