#pragma once

#include <QHash>
#include <QString>
#include <QVector>

#include <vector>

class QIODevice;

struct XmlNode
{
    QString name;
    QString text; ///< its own, without that of its children
    qint64 line = 0;
    int parent = -1;
    QVector<int> children;
    QVector<QPair<QString, QString>> attributes; ///< without those of a namespace, which are the editor's

    /// @return null if there is no such attribute
    QString attribute(const QString& attribute) const;
    bool hasAttribute(const QString& attribute) const { return !this->attribute(attribute).isNull(); }
};

/// The elements of an XML file in their order, with their lines. However deep they are nested, nothing recurses.
class XmlTree
{
public:
    XmlTree() = default;

    /// Reads up to the end or the first fault.
    explicit XmlTree(QIODevice& device);

    bool isEmpty() const { return m_nodes.empty(); }
    int size() const { return int(m_nodes.size()); }
    const XmlNode& operator[](int node) const { return m_nodes[std::size_t(node)]; }

    /// The children of this name; those of all nodes with the parent -1.
    QVector<int> named(const QString& name, int parent = -1) const;

    /// The text of the last child of this name; null if there is none.
    QString childText(int parent, const QString& name) const;

    const QString& error() const { return m_error; } ///< the reader's text; empty without a fault
    qint64 errorLine() const { return m_errorLine; }

private:
    std::vector<XmlNode> m_nodes;
    QString m_error;
    qint64 m_errorLine = 0;
};
