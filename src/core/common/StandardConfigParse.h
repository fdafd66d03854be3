#pragma once

#include "skylume_global.h"

#include <QMap>
#include <QString>

class QIODevice;
class QXmlStreamReader;

/// A small configuration file of conditions, results and customisation information, each a table of values by
/// name. Every block of the file adds its first item only; of items with the same name the later one counts.
///
///     <qrvldoc>
///       <customize_item>
///         <conditions><item name="operator" value="northtel"/></conditions>
///         <results><item name="homepage" value="portal"/></results>
///       </customize_item>
///       <customize_Info><item name="version" value="2"/></customize_Info>
///     </qrvldoc>
///
/// Not to be used from two threads at once, readers included.
class SKYLUME_EXPORT StandardConfigParse
{
public:
    /// @param fileName as for loadFile()
    explicit StandardConfigParse(QString fileName);

    /// Reads a file into the tables, over what they hold already.
    /// @param fileName path below the installation's folder; begins with "/"
    /// @return 0, or -1 when the file is missing, cannot be opened or has a fault; what was read before the
    ///         fault is kept
    int loadFile(QString fileName);

    /// The same from an open device; -1 for null. An empty document is no fault.
    int readXmlFile(QIODevice* device);

    // ---- Parts of a file, from behind their start tags

    /// @return what the last block gave, or -1 after a fault
    int parseCustomizeItem(QXmlStreamReader& reader, QString endName);

    int parseCustomizeInfo(QXmlStreamReader& reader, QString endName);

    /// Stores the next item in a table.
    /// @return how that ended, none a failure: -3 behind an item, -2 at the end tag `endName`, 0 at any other
    ///         end tag and at the end of the document
    int parseDetail(QXmlStreamReader& reader, QMap<QString, QString>& table, QString endName);

    // ---- Values by name; a name that is not there is added with an empty value

    QString GetConditionByName(QString name);
    QString GetResultByName(QString name);
    QString GetCustomInfoByName(QString name);

private:
    void readBlock(QXmlStreamReader& reader);

    QMap<QString, QString> m_conditions;
    QMap<QString, QString> m_results;
    QMap<QString, QString> m_customInfo;
};
