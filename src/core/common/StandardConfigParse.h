#pragma once

#include "skylume_global.h"

#include <QMap>
#include <QString>

class QIODevice;
class QXmlStreamReader;

/// A small configuration file with three tables of named values: conditions, results and customisation
/// information. Only the first item of each block is stored; a later item with the same name replaces it.
///
///     <qrvldoc>
///       <customize_item>
///         <conditions><item name="operator" value="northtel"/></conditions>
///         <results><item name="homepage" value="portal"/></results>
///       </customize_item>
///       <customize_Info><item name="version" value="2"/></customize_Info>
///     </qrvldoc>
///
/// Not thread-safe: even the getters change the tables.
class SKYLUME_EXPORT StandardConfigParse
{
public:
    /// @param fileName as for loadFile()
    explicit StandardConfigParse(QString fileName);

    /// Reads a file and adds its values to the tables.
    /// @param fileName path relative to the installation folder, starting with "/"
    /// @return 0, or -1 if the file is missing, cannot be opened or is malformed; values before an error are
    ///         kept
    int loadFile(QString fileName);

    /// The same for an open device; -1 if it is null. An empty document is valid.
    int readXmlFile(QIODevice* device);

    // ---- Steps of reading; the reader stands at the start tag of the element

    /// @return the result of the last parseDetail(), 0 if there was none, or -1 after an error
    int parseCustomizeItem(QXmlStreamReader& reader, QString endName);

    /// @return as for parseDetail()
    int parseCustomizeInfo(QXmlStreamReader& reader, QString endName);

    /// Stores the next item in a table, which belongs to the caller.
    /// @return -3 after an item, -2 at the end tag `endName`, 0 at any other end tag and at the end of the
    ///         document; none of these is an error
    int parseDetail(QXmlStreamReader& reader, QMap<QString, QString>& table, QString endName);

    // ---- Values by name; an unknown name is added with an empty value

    QString GetConditionByName(QString name);
    QString GetResultByName(QString name);
    QString GetCustomInfoByName(QString name);

private:
    void readBlock(QXmlStreamReader& reader);

    QMap<QString, QString> m_conditions;
    QMap<QString, QString> m_results;
    QMap<QString, QString> m_customInfo;
};
