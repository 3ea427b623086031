#pragma once
// The small shared types of the object model: the tri-state flag, list notifications, the change
// and destruction handlers, the "no identity" GUID and the comparison used to sort lists.

#include <QObject>
#include <QUuid>

#include <cstdint>
#include <functional>

namespace norva {

class TOrbObject;

inline namespace OrbTypes {
Q_NAMESPACE

enum TTriState : std::uint8_t { tristate_clear, tristate_set, tristate_none };
Q_ENUM_NS(TTriState)

// What happened to an item of a list, as reported to the list's Notify.
enum TListNotification : std::uint8_t { lnAdded, lnDeleted };
Q_ENUM_NS(TListNotification)

}  // namespace OrbTypes

// Called with the object where a change started; bound by default to the owner's Updated.
using TUpdateEvent = std::function<void(TOrbObject* sender)>;
using TNotifyEvent = std::function<void(TOrbObject* sender)>;

// Negative, zero or positive, as the first object sorts before, with or after the second.
using TOrbObjectCompare = std::function<int(TOrbObject* object1, TOrbObject* object2)>;

// The identity of an object that has none yet: all zero.
inline const QUuid NoGUID{};

}  // namespace norva
