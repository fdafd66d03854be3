#pragma once

#include "devices/Modem.h"
#include "files/IniDocument.h"

#include <QMap>
#include <QString>

/// Edits the text of a simulator file; lines that are not concerned stay as they are.
///
/// Modems are found by name or, if no name fits, by model, whatever the case. An operation that fails changes
/// nothing and says why in `error`.
class ModemEditor
{
public:
    /// `error` names the first fault of a content that is no sound simulator file; it must not be edited
    /// then.
    ModemEditor(const QByteArray& content, QString& error);

    const Modems& modems() const { return m_modems; }
    QByteArray toBytes() const { return m_document.toBytes(); }

    /// Attaches the modem of that name, else of that model; a new one if there is none. `values` are keys of
    /// the simulator file with their new values. `name` may be empty.
    bool attach(const QString& model, const QString& name, const QMap<QString, QString>& values,
                QString& error);

    /// Changes the state of a modem. Without `text` that is the only attached one.
    bool setState(const QString& text, Modem::State state, QString& error);

    /// Changes values of a modem, keys as for attach(). Without `text` that is the only attached one.
    bool setValues(const QString& text, const QMap<QString, QString>& values, QString& error);

    /// Adds a text message to a modem, with the time of now. Without `text` that is the only attached one.
    bool addMessage(const QString& text, const QMap<QString, QString>& values, QString& error);

private:
    /// The name of the one modem that the text fits or, without text, of the only attached one; null with an
    /// error.
    QString theOne(const QString& text, QString& error) const;
    Modems withName(const QString& text) const;
    Modems matching(const QString& text) const;
    Modems attached() const;
    void set(const QString& name, const QString& key, const QString& value);

    IniDocument m_document;
    Modems m_modems;
};
