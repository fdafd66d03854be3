#pragma once

class QLineEdit;
class QString;

/// Overwrites the characters of a string, also in all copies that share them, and empties it. Not for literals, which
/// cannot be overwritten.
void wipe(QString& secret);

/// Overwrites the text of a field, also in copies of it that share the characters, and empties it. Single
/// characters that Qt keeps for undoing are released but not overwritten. GUI thread only.
void wipe(QLineEdit* field);
