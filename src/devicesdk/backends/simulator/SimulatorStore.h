#pragma once

#include <QStringList>

#include <functional>

class IniDocument;

/// Changes the simulator's file, which other processes change too.
namespace SimulatorStore {

/// Changes the document; returns false if it cannot, and then says why in `error`.
using Edit = std::function<bool(IniDocument& document, QString& error)>;

/// Reads the first of the files that exists, changes it and writes the first one, so that the installation's
/// file is never written. Returns false and changes nothing if the file cannot be read or written, or is not
/// valid before or after the change. A missing file counts as empty if `mayCreate`.
bool change(const QStringList& files, bool mayCreate, const Edit& edit, QString& error);

} // namespace SimulatorStore
