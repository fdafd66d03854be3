#include "XmlTree.h"

#include <QXmlStreamReader>

namespace {

XmlNode nodeAt(const QXmlStreamReader& reader, int parent)
{
    XmlNode node;
    node.name = reader.name().toString();
    node.line = reader.lineNumber();
    node.parent = parent;
    for (const QXmlStreamAttribute& attribute : reader.attributes())
        if (attribute.namespaceUri().isEmpty())
            node.attributes.append({attribute.name().toString(), attribute.value() + QLatin1String("")});
    return node;
}

} // namespace

QString XmlNode::attribute(const QString& attribute) const
{
    for (const auto& [name, value] : attributes)
        if (name == attribute)
            return value.isNull() ? QStringLiteral("") : value;
    return {};
}

XmlTree::XmlTree(QIODevice& device)
{
    QXmlStreamReader reader(&device);
    int current = -1;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            m_nodes.push_back(nodeAt(reader, current));
            if (current >= 0)
                m_nodes[std::size_t(current)].children.append(size() - 1);
            current = size() - 1;
        } else if (reader.isEndElement()) {
            current = m_nodes[std::size_t(current)].parent;
        } else if (reader.isCharacters() && current >= 0) {
            m_nodes[std::size_t(current)].text += reader.text();
        }
    }
    m_error = reader.errorString();
    m_errorLine = reader.lineNumber();
}

QVector<int> XmlTree::named(const QString& name, int parent) const
{
    QVector<int> found;
    const auto take = [&](int node) {
        if ((*this)[node].name == name)
            found.append(node);
    };
    if (parent < 0) {
        for (int node = 0; node < size(); ++node)
            take(node);
    } else {
        for (const int child : (*this)[parent].children)
            take(child);
    }
    return found;
}

QString XmlTree::childText(int parent, const QString& name) const
{
    const QVector<int> found = named(name, parent);
    return found.isEmpty() ? QString() : (*this)[found.last()].text;
}
