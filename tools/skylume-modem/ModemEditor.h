#pragma once

#include "devices/Modem.h"
#include "files/IniDocument.h"

#include <QMap>
#include <QString>

/// Edits a simulator file. All other lines stay as they are.
///
/// Modems are found by name or, if no name matches, by model; upper and lower case are the same. An operation
/// that fails changes nothing and says why in `error`.
class ModemEditor
{
public:
    /// The document must be a valid simulator file.
    explicit ModemEditor(IniDocument& document);

    const Modems& modems() const { return m_modems; }

    /// Attaches the modem with that name, or with that model if `name` is empty; adds one if there is none.
    /// `values` are keys of the simulator file and their new values.
    bool attach(const QString& model, const QString& name, const QMap<QString, QString>& values,
                QString& error);

    /// Changes the state of a modem; of the only attached one if `text` is empty.
    bool setState(const QString& text, Modem::State state, QString& error);

    /// Changes values of a modem; of the only attached one if `text` is empty.
    bool setValues(const QString& text, const QMap<QString, QString>& values, QString& error);

    /// Adds a text message with the current time to a modem; to the only attached one if `text` is empty.
    bool addMessage(const QString& text, const QMap<QString, QString>& values, QString& error);

private:
    /// The name of the only modem that matches `text` or, if that is empty, is attached. Null after an error.
    QString theOne(const QString& text, QString& error) const;
    Modems withName(const QString& text) const;
    Modems matching(const QString& text) const;
    Modems attached() const;
    void set(const QString& name, const QString& key, const QString& value);

    IniDocument& m_document;
    Modems m_modems;
};
