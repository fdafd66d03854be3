#pragma once

class QByteArray;
class QLineEdit;
class QString;

// What others must not read. Any thread, except where stated.

/// Encrypts a text for the settings with CommonUtils::Encrypt(). That hides it from view; whoever knows the pass phrase
/// can decrypt it. No copy of the text stays in memory.
/// @return empty for an empty text, or if memory is short
QString protectedText(const QString& plain, const QByteArray& passPhrase);

/// Decrypts a result of protectedText(). A wrong pass phrase is not detected; it yields garbage.
/// @return the caller wipes it; empty if it cannot be decrypted
QString plainText(const QString& protectedText, const QByteArray& passPhrase);

/// Overwrites the characters of a string or the bytes of an array, also in all copies that share them, and empties it. The
/// compiler cannot leave this out. Not for literals, which cannot be overwritten.
void wipe(QString& secret);
void wipe(QByteArray& secret);

/// Overwrites the text of a field, also in copies of it that share the characters, and empties it. Single
/// characters that Qt keeps for undoing are released but not overwritten. GUI thread only.
void wipe(QLineEdit* field);
