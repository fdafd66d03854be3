#include "Validation.h"

#include "Findings.h"
#include "Schema.h"
#include "XmlTree.h"

#include <algorithm>

namespace {

constexpr int UnknownType =
    -2; ///< of an element in a place where none is allowed; its content is not checked

/// How far the children of an element have come in its type's sequence.
struct Progress
{
    int type = UnknownType;
    int slot = 0;
    QVector<int> counts; ///< by slot
};

class Validator
{
public:
    Validator(const XmlTree& tree, const Schema& schema, const QString& file, Findings& findings)
        : m_tree(tree)
        , m_schema(schema)
        , m_file(file)
        , m_findings(findings)
        , m_progress(tree.size())
    {
    }

    void run();

private:
    void begin(int node, int type);
    int place(int node);
    int globalType(int node) const;
    int placeIn(const SchemaType& type, int node, Progress& parent);
    int misplaced(const SchemaType& type, int node, Progress& parent);
    void checkAttributes(int node, const SchemaType& type);
    void checkText(int node, const SchemaType& type);
    void checkEnd(int node);
    void checkKey(int upper, const SchemaKey& key);
    QVector<int> select(int upper, const QStringList& path) const;
    QString field(int node, const QString& name, const SchemaKey& key);
    int freeSlot(const SchemaType& type, const QString& name, const Progress& parent) const;
    void add(Kind kind, int node, const QString& message, const SchemaNotes& notes)
    {
        m_findings.add(kind, m_file, m_tree[node].line, message, notes.value(Findings::nameOf(kind)));
    }

    const XmlTree& m_tree;
    const Schema& m_schema;
    const QString& m_file;
    Findings& m_findings;
    QVector<Progress> m_progress; ///< by node
};

void Validator::run()
{
    const QString& root = m_tree[0].name;
    const QString known = m_schema.globals.contains(root) ? root : m_schema.root;
    const SchemaGlobal global = m_schema.globals.value(known);
    if (known != root)
        add(Kind::WrongRoot, 0, QStringLiteral("the document is a \"%1\", not a \"%2\"").arg(root, known),
            global.element.notes);
    begin(0, global.element.type);
    for (int node = 1; node < m_tree.size(); ++node)
        begin(node, place(node));
    for (int node = 0; node < m_tree.size(); ++node)
        checkEnd(node);
    for (int node = 0; node < m_tree.size(); ++node)
        if (m_progress[node].type >= 0)
            for (const SchemaKey& key : m_schema.globals.value(node == 0 ? known : m_tree[node].name).keys)
                checkKey(node, key);
}

void Validator::begin(int node, int type)
{
    m_progress[node].type = type;
    if (type < 0)
        return;
    const SchemaType& known = m_schema.types[type];
    m_progress[node].counts.fill(0, known.content.size());
    checkAttributes(node, known);
    checkText(node, known);
}

/// Finds the type of an element from where it stands.
int Validator::place(int node)
{
    Progress& parent = m_progress[m_tree[node].parent];
    if (parent.type == UnknownType)
        return UnknownType;
    if (parent.type != Schema::AnyType)
        return placeIn(m_schema.types[parent.type], node, parent);
    return globalType(node);
}

/// The type of an element in a place where any element may be.
int Validator::globalType(int node) const
{
    const auto global = m_schema.globals.constFind(m_tree[node].name);
    return global == m_schema.globals.cend() ? Schema::AnyType : global->element.type;
}

int Validator::placeIn(const SchemaType& type, int node, Progress& parent)
{
    const int slot = freeSlot(type, m_tree[node].name, parent);
    if (slot < 0)
        return misplaced(type, node, parent);
    parent.slot = slot;
    ++parent.counts[slot];
    const SchemaElement* const element = type.content[slot].find(m_tree[node].name);
    return element ? element->type : globalType(node);
}

/// The first slot, from the current one on, that takes the element; -1 if there is none.
int Validator::freeSlot(const SchemaType& type, const QString& name, const Progress& parent) const
{
    for (int slot = parent.slot; slot < type.content.size(); ++slot) {
        const SchemaSlot& candidate = type.content[slot];
        const bool takes = candidate.elements.isEmpty() || candidate.find(name);
        if (takes && parent.counts[slot] < candidate.max)
            return slot;
    }
    return -1;
}

int Validator::misplaced(const SchemaType& type, int node, Progress& parent)
{
    const XmlNode& child = m_tree[node];
    for (int slot = 0; slot < type.content.size(); ++slot) {
        const SchemaElement* const element = type.content[slot].find(child.name);
        if (!element)
            continue;
        const bool isRepeated = slot == parent.slot;
        const Kind kind = isRepeated ? Kind::RepeatedElement : Kind::MisplacedElement;
        const bool hasOwnNote = element->notes.contains(Findings::nameOf(kind));
        ++parent.counts[slot]; // or it would be reported as missing as well
        add(kind, node,
            QStringLiteral("\"%1\" %2")
                .arg(child.name, isRepeated ? QStringLiteral("is there more than once")
                                            : QStringLiteral("is in the wrong place")),
            hasOwnNote ? element->notes : type.notes);
        return element->type;
    }
    add(Kind::UnknownElement, node,
        QStringLiteral("there is no element \"%1\" in \"%2\"").arg(child.name, m_tree[child.parent].name),
        {});
    return UnknownType;
}

void Validator::checkAttributes(int node, const SchemaType& type)
{
    const XmlNode& element = m_tree[node];
    for (const auto& [name, value] : element.attributes) {
        const SchemaAttribute* const known = type.attribute(name);
        if (!known) {
            add(Kind::UnknownAttribute, node,
                QStringLiteral("\"%1\" has no attribute \"%2\"").arg(element.name, name), {});
        } else if (!known->value.allows(value)) {
            SchemaNotes notes = known->value.notes;
            notes.insert(known->notes);
            add(Kind::BadValue, node,
                QStringLiteral("the attribute \"%1\" is \"%2\", must be %3")
                    .arg(name, value, known->value.description()),
                notes);
        }
    }
    for (const SchemaAttribute& required : type.attributes)
        if (required.isRequired && !element.hasAttribute(required.name))
            add(Kind::MissingAttribute, node,
                QStringLiteral("\"%1\" lacks the attribute \"%2\"").arg(element.name, required.name),
                required.notes);
}

void Validator::checkText(int node, const SchemaType& type)
{
    const XmlNode& element = m_tree[node];
    if (!type.hasText && !element.text.trimmed().isEmpty())
        add(Kind::StrayText, node,
            QStringLiteral("there is text in \"%1\": \"%2\"").arg(element.name, element.text.trimmed()), {});
    else if (type.hasText && !type.text.allows(element.text))
        add(Kind::BadValue, node,
            QStringLiteral("\"%1\" is \"%2\", must be %3")
                .arg(element.name, element.text, type.text.description()),
            type.text.notes);
}

void Validator::checkEnd(int node)
{
    const Progress& progress = m_progress[node];
    if (progress.type < 0)
        return;
    const QVector<SchemaSlot>& content = m_schema.types[progress.type].content;
    for (int slot = 0; slot < content.size(); ++slot) {
        if (progress.counts[slot] >= content[slot].min || content[slot].elements.isEmpty())
            continue;
        const SchemaElement& missing = content[slot].elements.first();
        add(Kind::MissingElement, node,
            QStringLiteral("\"%1\" has no \"%2\"").arg(m_tree[node].name, missing.name), missing.notes);
    }
}

QVector<int> Validator::select(int upper, const QStringList& path) const
{
    QVector<int> selected{upper};
    for (const QString& name : path) {
        QVector<int> next;
        for (const int node : qAsConst(selected))
            next += m_tree.named(name, node);
        selected = next;
    }
    return selected;
}

/// The value of a key's field; null if there is none.
QString Validator::field(int node, const QString& name, const SchemaKey& key)
{
    if (name.startsWith(QLatin1Char('@')))
        return m_tree[node].attribute(name.mid(1));
    const QVector<int> children = m_tree.named(name, node);
    if (children.size() > 1)
        add(Kind::RepeatedElement, children.last(),
            QStringLiteral("\"%1\" is there more than once").arg(name), key.notes);
    if (children.isEmpty() && key.isRequired)
        add(Kind::MissingElement, node, QStringLiteral("\"%1\" has no \"%2\"").arg(m_tree[node].name, name),
            key.notes);
    return m_tree.childText(node, name);
}

void Validator::checkKey(int upper, const SchemaKey& key)
{
    QHash<QStringList, qint64> lines; // by the values
    for (const int node : select(upper, key.path)) {
        QStringList values;
        for (const QString& name : key.fields)
            values.append(field(node, name, key));
        if (std::any_of(values.cbegin(), values.cend(), [](const QString& text) { return text.isNull(); }))
            continue;
        if (lines.contains(values))
            add(Kind::DuplicateEntry, node,
                QStringLiteral("\"%1\" is there already, in line %2")
                    .arg(values.join(QLatin1Char(' ')), QString::number(lines.value(values))),
                key.notes);
        else
            lines.insert(values, m_tree[node].line);
    }
}

} // namespace

void validate(const XmlTree& tree, const Schema& schema, const QString& file, Findings& findings)
{
    if (!tree.isEmpty())
        Validator(tree, schema, file, findings).run();
}
