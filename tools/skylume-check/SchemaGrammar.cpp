// The part of XML Schema that SchemaReader understands. Extend both together.
#include "SchemaGrammar.h"

#include "XmlTree.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace {

struct Construct
{
    const char* element;    ///< name, after the parent's name and "/" where that matters
    const char* children;   ///< regular expression for the names of all children, each followed by a space
    const char* attributes; ///< regular expression for each "name=value"
};

constexpr Construct Constructs[] = {
    {"schema", "(annotation |element |complexType |simpleType )*", ""},
    {"schema/element", "(annotation )?(complexType )?(unique |key )*", "(name|type)=.+"},
    {"choice/element", "(annotation )?(complexType )?", "(name|type)=.+"},
    {"element", "(annotation )?(complexType )?",
     "(name|type|ref)=.+|minOccurs=\\d+|maxOccurs=(\\d+|unbounded)"},
    {"complexType", "(annotation )?(sequence |choice |simpleContent )?(attribute )*", "name=.+"},
    {"simpleContent", "extension ", ""},
    {"extension", "(attribute )*", "base=.+"},
    {"sequence", "(element |choice |any |sequence )*", ""},
    {"sequence/sequence", "(element )*", "minOccurs=0"},
    {"choice", "(element )*", "minOccurs=\\d+|maxOccurs=(\\d+|unbounded)"},
    {"any", "(annotation )?", "minOccurs=\\d+|maxOccurs=(\\d+|unbounded)|processContents=lax"},
    {"attribute", "(annotation )?(simpleType )?", "(name|type)=.+|use=required"},
    {"simpleType", "(annotation )?restriction ", "name=.+"},
    {"restriction", "(enumeration )+|pattern ", "base=xs:string"},
    {"enumeration", "", "value=.*"},
    {"pattern", "", "value=.*"},
    {"unique", "(annotation )?selector (field )+", "name=.+"},
    {"key", "(annotation )?selector (field )+", "name=.+"},
    {"selector", "", "xpath=\\w+(/\\w+)*"},
    {"field", "", "xpath=@?\\w+"},
    {"annotation", "(documentation |appinfo )*", ""},
    {"documentation", "", ""},
    {"appinfo", "", "source=.+"},
};

const Construct* constructOf(const QString& element)
{
    const auto found =
        std::find_if(std::begin(Constructs), std::end(Constructs),
                     [&](const Construct& known) { return element == QLatin1String(known.element); });
    return found == std::end(Constructs) ? nullptr : &*found;
}

bool matches(const char* expression, const QString& text)
{
    const QRegularExpression whole(QRegularExpression::anchoredPattern(QLatin1String(expression)));
    return whole.match(text).hasMatch();
}

class Grammar
{
public:
    explicit Grammar(const XmlTree& tree)
        : m_tree(tree)
        , m_simpleTypes(namesOf("simpleType") << QStringLiteral("xs:string"))
        , m_types(namesOf("complexType") + m_simpleTypes)
        , m_elements(namesOf("element"))
    {
    }

    /// What is unknown about a node; empty if nothing is.
    QString fault(int node) const;

private:
    QSet<QString> namesOf(const char* kind) const;
    QString childrenOf(const XmlNode& node) const;
    bool isKnownName(const XmlNode& node, const QString& attribute, const QString& value) const;

    const XmlTree& m_tree;
    const QSet<QString> m_simpleTypes;
    const QSet<QString> m_types;
    const QSet<QString> m_elements;
};

/// The names of the schema's own children of a kind.
QSet<QString> Grammar::namesOf(const char* kind) const
{
    QSet<QString> names;
    for (const int node : m_tree.named(QLatin1String(kind), 0))
        names.insert(m_tree[node].attribute(QStringLiteral("name")));
    return names;
}

QString Grammar::childrenOf(const XmlNode& node) const
{
    QString names;
    for (const int child : node.children)
        names += m_tree[child].name + QLatin1Char(' ');
    return names;
}

/// Whether an attribute that refers to a type or an element refers to one that the schema defines.
bool Grammar::isKnownName(const XmlNode& node, const QString& attribute, const QString& value) const
{
    if (attribute == QLatin1String("ref"))
        return m_elements.contains(value);
    if (attribute == QLatin1String("type"))
        return (node.name == QLatin1String("element") ? m_types : m_simpleTypes).contains(value);
    return attribute != QLatin1String("base") || m_simpleTypes.contains(value);
}

QString Grammar::fault(int node) const
{
    const XmlNode& element = m_tree[node];
    const QString parent = element.parent < 0 ? QString() : m_tree[element.parent].name + QLatin1Char('/');
    const Construct* const inParent = constructOf(parent + element.name);
    const Construct* const known = inParent ? inParent : constructOf(element.name);
    const QString children = childrenOf(element);
    if (!known || !matches(known->children, children))
        return QStringLiteral("\"%1\" with \"%2\"").arg(element.name, children.trimmed());
    for (const auto& [name, value] : element.attributes)
        if (!matches(known->attributes, name + QLatin1Char('=') + value) ||
            !isKnownName(element, name, value))
            return QStringLiteral("\"%1\" with %2=\"%3\"").arg(element.name, name, value);
    const bool hasType = element.hasAttribute(QStringLiteral("type")) ||
                         element.hasAttribute(QStringLiteral("ref")) ||
                         children.contains(QLatin1String("complexType"));
    return element.name == QLatin1String("element") && !hasType ? QStringLiteral("\"element\" without a type")
                                                                : QString();
}

} // namespace

QString unknownConstruct(const XmlTree& schema)
{
    if (schema.isEmpty() || !schema.error().isEmpty())
        return schema.error();
    const Grammar grammar(schema);
    for (int node = 0; node < schema.size(); ++node) {
        const QString fault = grammar.fault(node);
        if (!fault.isEmpty())
            return QStringLiteral("line %1: %2").arg(schema[node].line).arg(fault);
    }
    return {};
}
