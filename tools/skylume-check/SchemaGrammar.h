#pragma once

#include <QString>

class XmlTree;

/// Finds what SchemaReader would ignore in a schema: elements, attributes, values and names of types that it does not
/// know. With one of these a schema would allow what it seems to forbid.
/// @return the first of them with its line; empty if SchemaReader understands the whole schema
QString unknownConstruct(const XmlTree& schema);
