#pragma once

#include <QString>
#include <QVector>

class IniDocument;

/// Chooses the customisation name of a real modem by rules of a file, see docs/device-service.md.
class Customization
{
public:
    /// What is known about a modem and its SIM.
    struct Facts
    {
        QString model;
        QString imsi;
        QString operatorCode; ///< of the SIM; empty if the SIM does not say how long it is
        QString gid;
        bool isGidKnown = false;
    };

    Customization() = default;

    /// Reads the rules. Sections without "name" are logged and ignored.
    explicit Customization(const IniDocument& document);

    /// The name of the first rule whose conditions all apply. Empty if there is none, or if a rule before it
    /// depends on something that is not known.
    QString nameFor(const Facts& facts) const;

    /// A group identifier as rules and programs see it: without padding; as text if it consists of printable
    /// ASCII characters, otherwise in upper-case hexadecimal digits.
    static QString gidText(const QByteArray& bytes);

private:
    enum class Match { No, Unknown, Yes };

    struct Rule
    {
        QString name;
        QString operatorCode;
        QString gid;
        QString imsi; // its beginning
        QString model;
    };

    static Match match(const Rule& rule, const Facts& facts);

    QVector<Rule> m_rules;
};
