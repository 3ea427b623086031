#include <NorvaBusComms/Devices/BusMessages.h>

#include <QCoreApplication>

#include <atomic>

namespace norva {

namespace {
std::atomic<std::uint64_t> gPostedMessages{0};
}  // namespace

void TBusMessage::Post(QObject* receiver, QEvent::Type type, std::intptr_t parameter,
                       std::uint32_t generation) {
  auto* message = new TBusMessage(type, parameter, generation);
  gPostedMessages.fetch_add(1, std::memory_order_release);
  QCoreApplication::postEvent(receiver, message);
}

const TBusMessage* TBusMessage::Received(const QEvent* event) {
  gPostedMessages.load(std::memory_order_acquire);  // before anything of the event is read
  const QEvent::Type type = event->type();
  if (type != RXEventMessage && type != ThreadCrashMessage && type != ConnectionDroppedMessage)
    return nullptr;
  return static_cast<const TBusMessage*>(event);
}

}  // namespace norva
