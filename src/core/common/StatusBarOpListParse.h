#pragma once

#include "common/_ST_MCCMNC_ITEM.h"
#include "skylume_global.h"

#include <QString>

#include <memory>

class QXmlStreamReader;

/// The names of mobile network operators, from three lists in the folder of the status-bar plugin:
/// "OperatorList.xml", "CPLMNOpList.xml" and "CMCCMNCOpList.xml". If a list is missing or broken, names are
/// missing; lookups that find nothing return empty strings. If a list has several entries with the same key,
/// the last one applies.
///
/// Use the instance on the GUI thread. Only GetInstance() may be called on any thread, so that a worker can
/// read the lists; other callers wait until it has finished.
class SKYLUME_EXPORT StatusBarOpListParse
{
public:
    /// The only instance. The first call creates it and reads the lists.
    static StatusBarOpListParse* GetInstance();

    /// Deletes the instance and so invalidates all pointers to it: nobody may be using one. The next
    /// GetInstance() reads the lists again.
    static void DestroyInstance();

    ~StatusBarOpListParse();

    /// The operator of a network.
    /// @param mcc mobile country code, digits
    /// @param mnc mobile network code, digits
    /// @return the listed names. For an unknown network of a known country: the country's short name as full
    ///         name and, followed by the MNC, as short name. Otherwise empty. If the names have a language
    ///         string with a translation, it replaces the short name.
    _ST_MCCMNC_ITEM GetOperatorData(QString mcc, QString mnc);

    /// The operator of a SIM card: the name of the longest listed prefix of the IMSI. Prefixes of less than 5
    /// characters are ignored.
    QString GetCPLMNOperatorData(QString imsi);

    /// The operator of a network.
    /// @param code MCC and MNC joined
    QString GetCMCCMNCOperatorData(QString const& code);

    /// The name, without folder, of the list that was opened last; empty if none was.
    QString GetLoadFileName();

    /// Empties all tables.
    void ReleaseData();

    // ---- Reading further lists into the tables

    /// Reads a file in the format of "OperatorList.xml", "CPLMNOpList.xml" or "CMCCMNCOpList.xml". Nothing changes
    /// (logged) if it is missing or cannot be opened.
    /// @param fileName name of a file in the folder of the status-bar plugin
    void LoadFile(QString fileName);
    void LoadCPLMNOpListFile(QString fileName);
    void LoadCMCCMNCOpListFile(QString fileName);

    /// Reads a whole list. An XML error is logged and ends reading; entries before it are kept.
    void readFile(QXmlStreamReader& reader);
    void readCPLMNOpListFile(QXmlStreamReader& reader);
    void readCMCCMNCOpListFile(QXmlStreamReader& reader);

    /// Reads a section of "OperatorList.xml"; the reader stands at its start tag.
    /// @return false after an XML error
    bool readOperatorList(QXmlStreamReader& reader);
    bool readMccMncInfo(QXmlStreamReader& reader);
    bool readMccOnlyInfo(QXmlStreamReader& reader);

    /// @return false, and logs the error, if the reader has one
    bool checkError(QXmlStreamReader& reader);

private:
    StatusBarOpListParse();

    class Private;
    const std::unique_ptr<Private> m_d;
};
