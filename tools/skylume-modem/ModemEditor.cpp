#include "ModemEditor.h"

#include "backends/simulator/SimulatorFile.h"

#include <QDateTime>

#include <algorithm>
#include <iterator>

namespace {

template <typename Test>
Modems selected(const Modems& modems, Test test)
{
    Modems found;
    std::copy_if(modems.begin(), modems.end(), std::back_inserter(found), test);
    return found;
}

bool isSame(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString namesOf(const Modems& modems)
{
    QStringList names;
    for (const Modem& modem : modems)
        names.append(QLatin1Char('"') + modem.name + QLatin1Char('"'));
    return names.isEmpty() ? QStringLiteral("none") : names.join(QStringLiteral(", "));
}

} // namespace

ModemEditor::ModemEditor(IniDocument& document)
    : m_document(document)
{
    QStringList errors;
    m_modems = SimulatorFile::read(m_document, errors);
}

bool ModemEditor::attach(const QString& model, const QString& name, const QMap<QString, QString>& values,
                         QString& error)
{
    const Modems found = name.isEmpty() ? matching(model) : withName(name);
    if (found.size() > 1) {
        error = QStringLiteral("several modems match: %1; choose one with --name").arg(namesOf(found));
        return false;
    }
    const QString newName = name.isEmpty() ? model : name;
    const QString target = found.isEmpty() ? newName : found.first().name;
    if (found.isEmpty() || (!name.isEmpty() && !isSame(found.first().model, model)))
        set(target, QStringLiteral("model"), model);
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        set(target, value.key(), value.value());
    set(target, QStringLiteral("state"), SimulatorFile::stateText(Modem::Attached));
    return true;
}

bool ModemEditor::setState(const QString& text, Modem::State state, QString& error)
{
    return setValues(text, {{QStringLiteral("state"), SimulatorFile::stateText(state)}}, error);
}

bool ModemEditor::setValues(const QString& text, const QMap<QString, QString>& values, QString& error)
{
    const QString name = theOne(text, error);
    for (auto value = values.cbegin(); value != values.cend() && !name.isNull(); ++value)
        set(name, value.key(), value.value());
    return !name.isNull();
}

bool ModemEditor::addMessage(const QString& text, const QMap<QString, QString>& values, QString& error)
{
    const QString name = theOne(text, error);
    if (name.isNull())
        return false;
    const QString section = SimulatorFile::messageSectionOf(SimulatorFile::freeMessage(m_document));
    m_document.set(section, QStringLiteral("modem"), name);
    m_document.set(section, QStringLiteral("time"), QDateTime::currentDateTime().toString(Qt::ISODate));
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        m_document.set(section, value.key(), value.value());
    return true;
}

QString ModemEditor::theOne(const QString& text, QString& error) const
{
    const Modems found = text.isEmpty() ? attached() : matching(text);
    if (found.size() == 1)
        return found.first().name;
    if (text.isEmpty())
        error = QStringLiteral("name the modem; attached are: %1").arg(namesOf(found));
    else if (found.isEmpty())
        error = QStringLiteral("there is no modem \"%1\"; known are: %2").arg(text, namesOf(m_modems));
    else
        error = QStringLiteral("several modems match \"%1\": %2").arg(text, namesOf(found));
    return {};
}

Modems ModemEditor::withName(const QString& text) const
{
    return selected(m_modems, [&](const Modem& modem) { return isSame(modem.name, text); });
}

Modems ModemEditor::matching(const QString& text) const
{
    const Modems named = withName(text);
    return named.isEmpty() ? selected(m_modems, [&](const Modem& modem) { return isSame(modem.model, text); })
                           : named;
}

Modems ModemEditor::attached() const
{
    return selected(m_modems, [](const Modem& modem) { return modem.state == Modem::Attached; });
}

void ModemEditor::set(const QString& name, const QString& key, const QString& value)
{
    m_document.set(SimulatorFile::sectionOf(name), key, value);
}
