#pragma once
// Values an edit writes: real infra-red codes, names with the characters files must escape, GUIDs,
// button classes (applet classes with their client class too), command bytes and raw signals.

#include "EditChoices.h"

#include <ButtonClasses/ButtonClass.h>

#include <QByteArray>
#include <QList>
#include <QString>

namespace norva::edits {

// A hex code of a real remote control (tests/data/ir), now and then one that is no code at all.
QString HexCodeValue(TEditChoices& choices);
// A name or caption: plain, empty, with surrounding blanks, non-Latin or with XML's own characters.
QString TextValue(TEditChoices& choices);
// One of a few GUIDs in registry form, so that edits meet the same identities again.
QString GUIDValue(TEditChoices& choices);
// A button class of any group, an applet class named by a registered class, or none.
TButtonClass ButtonClassValue(TEditChoices& choices);
TButtonClasses ButtonClassesValue(TEditChoices& choices);
// "class 5 of group 3", "class 5 of applets of TIRStream": what a report needs to tell classes
// apart.
QString ButtonClassText(const TButtonClass& buttonClass);
// Upper- or lower-case hexadecimal digits, sometimes an odd count or a pair that is no number.
QString HexDigitsValue(TEditChoices& choices);
QByteArray BytesValue(TEditChoices& choices);
// Sixteen lengths in the text form of a stream, or fewer (the form repeats them).
QString PeriodLengthsValue(TEditChoices& choices);
// On/off pairs in the text form of a stream, ending in a word end or not.
QString PeriodIDPairsValue(TEditChoices& choices);
// A learnt signal: alternating on and off times in microseconds, at the returned carrier.
QList<double> RawSignalValue(TEditChoices& choices, double& carrierHz);

}  // namespace norva::edits
