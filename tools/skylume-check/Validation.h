#pragma once

class Findings;
class QString;
struct Schema;
class XmlTree;

/// Compares a file with its schema: elements and their places, attributes, values and duplicates.
/// @param file name for the findings
void validate(const XmlTree& tree, const Schema& schema, const QString& file, Findings& findings);
