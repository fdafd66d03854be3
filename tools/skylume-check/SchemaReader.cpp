// Reads the schemas that are built into the tool.
#include "Schema.h"
#include "SchemaGrammar.h"
#include "XmlTree.h"

#include <QFile>

#include <limits>

namespace {

class SchemaReader
{
public:
    explicit SchemaReader(const XmlTree& tree)
        : m_tree(tree)
    {
    }

    Schema read();

private:
    QString attribute(int node, const char* name) const
    {
        return m_tree[node].attribute(QLatin1String(name));
    }
    int child(int node, const char* name) const
    {
        return m_tree.named(QLatin1String(name), node).value(0, -1);
    }
    int occurrences(int node, const char* name) const;
    SchemaNotes notes(int node) const;

    SchemaValue value(int simpleType) const;
    SchemaValue namedValue(const QString& type) const { return m_values.value(type); }
    int typeFor(int element);
    void fill(int type, int complexType);
    void fillContent(int type, int group, bool isOptional);
    SchemaSlot slot(int particle, bool isOptional);
    SchemaElement element(int node);
    SchemaAttribute attributeAt(int node) const;
    SchemaKey key(int node) const;
    int addType();

    const XmlTree& m_tree;
    Schema m_schema;
    QHash<QString, int> m_types;          ///< indexes of named complex types
    QHash<QString, SchemaValue> m_values; ///< named simple types
};

Schema SchemaReader::read()
{
    for (const int node : m_tree.named(QStringLiteral("simpleType"), 0))
        m_values.insert(attribute(node, "name"), value(node));
    // All types have their indexes before the first is read: they refer to each other.
    const QVector<int> types = m_tree.named(QStringLiteral("complexType"), 0);
    for (const int node : types)
        m_types.insert(attribute(node, "name"), addType());
    const QVector<int> elements = m_tree.named(QStringLiteral("element"), 0);
    m_schema.root = attribute(elements.first(), "name");
    for (const int node : elements) {
        const QString name = attribute(node, "name");
        const QString type = attribute(node, "type");
        m_schema.globals.insert(name,
                                {{name, type.isEmpty() ? addType() : m_types.value(type), notes(node)}, {}});
    }
    for (const int node : types)
        fill(m_types.value(attribute(node, "name")), node);
    for (const int node : elements) {
        SchemaGlobal& global = m_schema.globals[attribute(node, "name")];
        for (const char* kind : {"key", "unique"})
            for (const int constraint : m_tree.named(QLatin1String(kind), node))
                global.keys.append(key(constraint));
        if (child(node, "complexType") >= 0)
            fill(global.element.type, child(node, "complexType"));
    }
    return m_schema;
}

int SchemaReader::addType()
{
    m_schema.types.append(SchemaType());
    return m_schema.types.size() - 1;
}

int SchemaReader::occurrences(int node, const char* name) const
{
    const QString text = attribute(node, name);
    if (text == QLatin1String("unbounded"))
        return std::numeric_limits<int>::max();
    return text.isEmpty() ? 1 : text.toInt();
}

SchemaNotes SchemaReader::notes(int node) const
{
    SchemaNotes notes;
    const int annotation = child(node, "annotation");
    if (annotation < 0)
        return notes;
    for (const int note : m_tree.named(QStringLiteral("appinfo"), annotation))
        notes.insert(attribute(note, "source"), m_tree[note].text);
    return notes;
}

SchemaValue SchemaReader::value(int simpleType) const
{
    SchemaValue value;
    value.notes = notes(simpleType);
    const int restriction = child(simpleType, "restriction");
    for (const int word : m_tree.named(QStringLiteral("enumeration"), restriction))
        value.words.append(attribute(word, "value"));
    const int pattern = child(restriction, "pattern");
    if (pattern < 0)
        return value;
    value.pattern = attribute(pattern, "value");
    value.wholePattern.setPattern(QRegularExpression::anchoredPattern(value.pattern));
    return value;
}

int SchemaReader::typeFor(int element)
{
    const QString name = attribute(element, "type");
    if (m_types.contains(name))
        return m_types.value(name);
    const int type = addType();
    if (child(element, "complexType") >= 0) {
        fill(type, child(element, "complexType"));
    } else {
        m_schema.types[type].hasText = true;
        m_schema.types[type].text = namedValue(name);
    }
    return type;
}

void SchemaReader::fill(int type, int complexType)
{
    m_schema.types[type].notes = notes(complexType);
    const int simpleContent = child(complexType, "simpleContent");
    const int extension = simpleContent < 0 ? complexType : child(simpleContent, "extension");
    if (simpleContent >= 0) {
        m_schema.types[type].hasText = true;
        m_schema.types[type].text = namedValue(attribute(extension, "base"));
    }
    for (const int node : m_tree.named(QStringLiteral("attribute"), extension))
        m_schema.types[type].attributes.append(attributeAt(node));
    fillContent(type, complexType, false);
}

/// Reads the steps of a "sequence", or the single step of a "choice".
void SchemaReader::fillContent(int type, int group, bool isOptional)
{
    if (child(group, "choice") >= 0 && m_tree[group].name == QLatin1String("complexType")) {
        const SchemaSlot step = slot(child(group, "choice"), isOptional);
        m_schema.types[type].content.append(step);
        return;
    }
    const int sequence = m_tree[group].name == QLatin1String("sequence") ? group : child(group, "sequence");
    if (sequence < 0)
        return;
    for (const int particle : m_tree[sequence].children) {
        if (m_tree[particle].name == QLatin1String("sequence")) {
            fillContent(type, particle, true); // the only use of a sequence in a sequence
        } else {
            const SchemaSlot step = slot(particle, isOptional);
            m_schema.types[type].content.append(step);
        }
    }
}

SchemaSlot SchemaReader::slot(int particle, bool isOptional)
{
    SchemaSlot slot;
    slot.min = isOptional ? 0 : occurrences(particle, "minOccurs");
    slot.max = occurrences(particle, "maxOccurs");
    if (m_tree[particle].name == QLatin1String("element"))
        slot.elements.append(element(particle));
    for (const int node : m_tree.named(QStringLiteral("element"), particle))
        slot.elements.append(element(node));
    return slot;
}

SchemaElement SchemaReader::element(int node)
{
    const QString reference = attribute(node, "ref");
    if (!reference.isEmpty())
        return m_schema.globals.value(reference).element;
    const int type = typeFor(node);
    return {attribute(node, "name"), type, notes(node)};
}

SchemaAttribute SchemaReader::attributeAt(int node) const
{
    const int inlineType = child(node, "simpleType");
    return {attribute(node, "name"), attribute(node, "use") == QLatin1String("required"),
            inlineType < 0 ? namedValue(attribute(node, "type")) : value(inlineType), notes(node)};
}

SchemaKey SchemaReader::key(int node) const
{
    SchemaKey key{m_tree[node].name == QLatin1String("key"),
                  attribute(child(node, "selector"), "xpath").split(QLatin1Char('/')),
                  {},
                  notes(node)};
    for (const int field : m_tree.named(QStringLiteral("field"), node))
        key.fields.append(attribute(field, "xpath"));
    return key;
}

} // namespace

Schema Schema::read(const QString& name)
{
    QFile file(QStringLiteral(":/schemas/%1.xsd").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("There is no schema %s", qUtf8Printable(name));
    const XmlTree tree(file);
    const QString unknown = unknownConstruct(tree);
    if (!unknown.isEmpty())
        qFatal("The schema %s has something that this program does not understand: %s", qUtf8Printable(name),
               qUtf8Printable(unknown));
    return SchemaReader(tree).read();
}
