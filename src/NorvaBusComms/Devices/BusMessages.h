#pragma once
// The messages workers post to the UI thread, as events whose type is the message number.

#include <QEvent>
#include <QObject>

#include <cstdint>

namespace norva {

// 0x500: received bytes wait in a receive worker; the parameter is the source kind.
inline constexpr auto RXEventMessage = static_cast<QEvent::Type>(0x500);
// 0x501: a worker failed and has ended itself; the parameter is the system error code.
inline constexpr auto ThreadCrashMessage = static_cast<QEvent::Type>(0x501);
// 0x502: the client dropped the connection after a worker failure.
inline constexpr auto ConnectionDroppedMessage = static_cast<QEvent::Type>(0x502);

class TBusMessage : public QEvent {
 public:
  TBusMessage(QEvent::Type type, std::intptr_t parameter, std::uint32_t generation = 0)
      : QEvent(type), mParameter(parameter), mGeneration(generation) {}

  // Posts a message from any thread. The event queue already orders the hand-over; the extra
  // release/acquire pair makes that order visible to race detectors, which cannot see inside
  // the toolkit's own locks.
  static void Post(QObject* receiver, QEvent::Type type, std::intptr_t parameter,
                   std::uint32_t generation);
  // On the receiving thread: the message `event` carries when it is one of the three bus
  // messages, else nullptr.
  static const TBusMessage* Received(const QEvent* event);

  std::intptr_t Parameter() const { return mParameter; }
  // Which opening of the link the posting worker belonged to.
  std::uint32_t Generation() const { return mGeneration; }

 private:
  std::intptr_t mParameter;
  std::uint32_t mGeneration;
};

}  // namespace norva
