#pragma once

#include "Fault.h"
#include "LanguageFile.h"

class QIODevice;

/// Translation files of Qt Linguist (.ts). A message's id is the string's identifier; its source is the
/// string in the reference language.
namespace LinguistFile {

/// Writes a language file's strings in the order of the reference, with the reference's comments. Strings
/// that the file lacks are marked as unfinished, strings that the reference lacks as vanished.
void write(QIODevice& device, const LanguageFile& file, const LanguageFile& reference);

/// Reads translated strings and comments. Messages that are untranslated or vanished are skipped.
/// @param file   receives them; its path is used for the faults
/// @param faults receives broken XML and messages without an id
void read(QIODevice& device, LanguageFile& file, Faults& faults);

} // namespace LinguistFile
