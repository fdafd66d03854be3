#pragma once

#include "Fault.h"
#include "LanguageFile.h"

class QIODevice;

/// Translation files of Qt Linguist (.ts). A message's id is the text's identifier, its source the text in
/// the reference language.
namespace LinguistFile {

/// Writes a language file's texts in the order of the reference. What is missing is unfinished; what the
/// reference does not have is vanished.
void write(QIODevice& device, const LanguageFile& file, const LanguageFile& reference);

/// Reads the translated texts; messages without a translation and vanished ones are left out.
/// @param faults receives broken XML and messages without an id
LanguageTexts read(QIODevice& device, const QString& path, Faults& faults);

} // namespace LinguistFile
