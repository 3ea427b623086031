#pragma once
// The small vocabulary of keypad documents.

#include <QObject>

#include <cstdint>

namespace norva {

class TKeypadDevice;

// Named apart from the device type KeypadDevice (NorvaGlobal), which clients see beside it.
inline namespace KeypadTypes {
Q_NAMESPACE

// Which kind of amplifier zone a keypad serves.
enum tKeypadZoneType : std::uint8_t { AmpZone, PreampZone, BothZones };
Q_ENUM_NS(tKeypadZoneType)

}  // namespace KeypadTypes

// A keypad type: a class derived from TKeypadDevice with a Q_INVOKABLE constructor taking the
// owner, so that documents of a chosen type can be created (CreateKeypadDevice).
using TKeypadDeviceClass = const QMetaObject*;

}  // namespace norva
