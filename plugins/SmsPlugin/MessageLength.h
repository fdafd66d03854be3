#pragma once

class QString;

/// How a text is sent.
struct MessageLength
{
    int characters = 0; ///< as the user counts them: an emoji is one
    int parts = 0;      ///< messages that are sent and charged; 0 without a text
    int left = 0;       ///< how much still fits into the last part
};

/// Splits a text as modems do. With the characters of GSM 7-bit a single message holds 160, a part of several 153;
/// those of its extension table count twice. With any other character, messages hold 70 and 67 units of UCS-2. No
/// character is split between two parts.
MessageLength messageLength(const QString& text);
