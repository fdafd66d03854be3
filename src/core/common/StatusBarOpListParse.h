#pragma once

#include "common/_ST_MCCMNC_ITEM.h"
#include "common/operators/CodeTable_p.h"
#include "common/operators/PrefixTable_p.h"
#include "skylume_global.h"

#include <QString>

#include <memory>

class QXmlStreamReader;

/// The names of mobile networks, read once from three lists of the status-bar plugin: "OperatorList.xml",
/// "CPLMNOpList.xml" and "CMCCMNCOpList.xml". A list that is missing or broken leaves its names out; a name
/// that is not found is empty. Of entries with the same key the later one counts. Names are asked for on the
/// GUI thread. GetInstance() may be called by any thread, so that a worker can have the lists read; who calls
/// it meanwhile waits for that.
class SKYLUME_EXPORT StatusBarOpListParse
{
public:
    /// The one instance; it is made, and the lists are read, with the first call.
    static StatusBarOpListParse* GetInstance();

    /// Deletes the instance. The next GetInstance() reads the lists anew.
    static void DestroyInstance();

    /// The operator of a network.
    /// @param mcc, mnc mobile country code and mobile network code as texts of digits
    /// @return the listed names; for an unknown network of a known country the country's short name with the
    ///         MNC behind it; else empty. A translation of the name, if there is one, is the short name.
    _ST_MCCMNC_ITEM GetOperatorData(QString mcc, QString mnc);

    /// The operator by the longest listed prefix of an IMSI that has 5 characters or more.
    QString GetCPLMNOperatorData(QString imsi);

    /// The operator by MCC and MNC in one text.
    QString GetCMCCMNCOperatorData(QString const& code);

    /// The name of the list that was loaded last, without its folder.
    QString GetLoadFileName();

    /// Empties the tables.
    void ReleaseData();

    // ---- Reading further lists, each into its table

    /// @param fileName a list in the status-bar plugin's folder
    void LoadFile(QString fileName);
    void LoadCPLMNOpListFile(QString fileName);
    void LoadCMCCMNCOpListFile(QString fileName);

    /// The whole of a list. A fault is logged and ends the reading; what was read before it stays.
    void readFile(QXmlStreamReader& reader);
    void readCPLMNOpListFile(QXmlStreamReader& reader);
    void readCMCCMNCOpListFile(QXmlStreamReader& reader);

    /// A part of an operator list, from behind its start tag.
    /// @return false after a fault
    bool readOperatorList(QXmlStreamReader& reader);
    bool readMccMncInfo(QXmlStreamReader& reader);
    bool readMccOnlyInfo(QXmlStreamReader& reader);

    /// @return false, with a line in the log, when the reader has met a fault
    bool checkError(QXmlStreamReader& reader);

private:
    StatusBarOpListParse();

    using ListReader = void (StatusBarOpListParse::*)(QXmlStreamReader&);
    void load(const char* function, const QString& fileName, ListReader read);

    /// Reads a list that gives each key a name.
    template <typename OnItem>
    void readNames(QXmlStreamReader& reader, QStringView root, OnItem onItem);

    /// The listed names of a network, untranslated.
    _ST_MCCMNC_ITEM findOperator(const QString& mcc, const QString& mnc) const;

    std::unique_ptr<CodeTable<_ST_MCCMNC_ITEM>> m_pHashMccMnc; ///< by MCC and MNC in one text
    std::unique_ptr<CodeTable<_ST_MCCMNC_ITEM>> m_pHashMccOnly;
    QString m_strFileName;
    PrefixTable m_hashCPLMN;
    CodeTable<QString> m_hashCMCCMNC;
};
