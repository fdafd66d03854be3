#pragma once

#include "support/Fault.h"

#include <QSet>

/// What can be wrong with an installation. Findings.cpp has the texts.
enum class Kind {
    BrokenXml,
    WrongRoot,
    UnknownElement,
    MisplacedElement,
    RepeatedElement,
    MissingElement,
    UnknownAttribute,
    MissingAttribute,
    BadValue,
    StrayText,
    DuplicateEntry,
    MissingFile,
    UnknownClsid,
    RepeatedEntry,
    UnknownMainPlugin,
    MissingLibrary,
    AmbiguousLibrary,
    OtherPlatform,
    NotAPlugin,
    MissingDependency,
    ConstructorThrows,
    MissingInterface,
    UnknownParent,
    UnknownMenu,
    NothingToRemove,
    NoAction,
    BlockRunsOn,
    HiddenBlock,
    NamelessBlock,
    MenuAfterBlocks,
    UnknownText,
    UnknownPlugin,
    MissingIcon,
    WrongCount,
    BrokenLine,
    QuotedValue,
    ModemFile,
    NameInOtherCase,
    NoUnit,
    UnknownLanguage,
    UnknownSkin,
    SkinWithoutMirror,
    LanguageFile,
};

/// Collects what is wrong, in any order.
class Findings
{
public:
    /// @param message what is wrong
    /// @param effect  what happens at run time; empty for the usual effect of the kind
    void add(Kind kind, const QString& file, qint64 line, const QString& message, const QString& effect = {});

    /// Adds the findings of another check that are in lines without a finding.
    void addNew(const Findings& others);

    /// The findings by file and line.
    Faults faults() const;

    /// The kind's name in reports and schemas, such as "unknown-element".
    static QString nameOf(Kind kind);

private:
    Faults m_faults;
    QSet<QPair<QString, qint64>> m_places;
};
