#pragma once

#include <QString>

/// Why a call has ended.
enum class CallEnd { HungUp, Busy, NoAnswer, Refused, NoNetwork, NoModem };

/// The reason in words, in the current language.
QString wordsOf(CallEnd end);

/// What a simulated network does with a call: the simulated modem's value "calls" says so.
/// @return HungUp if the call is answered: then the user ends it
CallEnd simulatedEnd(quint32 modem);
