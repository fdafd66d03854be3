#pragma once

#include <QHash>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QVector>

/// What the schema says in "appinfo" about the faults of an element or attribute: what happens at run time, by
/// the name of the finding.
using SchemaNotes = QHash<QString, QString>;

/// The texts that are allowed; all if both are empty.
struct SchemaValue
{
    QStringList words;
    QString pattern;
    QRegularExpression wholePattern; ///< `pattern` for the whole text; compiled once
    SchemaNotes notes;

    bool allows(const QString& text) const;
    QString description() const; ///< continues "must be"
};

struct SchemaAttribute
{
    QString name;
    bool isRequired = false;
    SchemaValue value;
    SchemaNotes notes;
};

struct SchemaElement
{
    QString name;
    int type = -1; ///< index in Schema::types
    SchemaNotes notes;
};

/// A step in the sequence of an element's children.
struct SchemaSlot
{
    QVector<SchemaElement> elements; ///< one of these; empty for any element
    int min = 1;
    int max = 1;

    const SchemaElement* find(const QString& name) const;
};

struct SchemaType
{
    QVector<SchemaSlot> content;
    QVector<SchemaAttribute> attributes;
    bool hasText = false;
    SchemaValue text;
    SchemaNotes notes; ///< for its children that have none of their own

    const SchemaAttribute* attribute(const QString& name) const;
};

/// Elements below another that must differ in the values of some attributes or children.
struct SchemaKey
{
    bool isRequired = false; ///< every value must be there
    QStringList path;        ///< names of the elements from the upper one to these
    QStringList fields;      ///< names; those of attributes begin with "@"
    SchemaNotes notes;
};

struct SchemaGlobal
{
    SchemaElement element;
    QVector<SchemaKey> keys;
};

/// One of docs/schemas, in the part of XML Schema that these use: sequences of elements and choices, attributes,
/// enumerations, patterns, unique and key. SchemaGrammar.h refuses everything else.
struct Schema
{
    static constexpr int AnyType = -1;

    /// Reads a schema that is built into the tool. Ends the program if it does not understand all of it.
    /// @param name the file's name without a suffix
    static Schema read(const QString& name);

    QVector<SchemaType> types;
    QHash<QString, SchemaGlobal> globals; ///< by name
    QString root;                         ///< the first of them, the usual one
};
