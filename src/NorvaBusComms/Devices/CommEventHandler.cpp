#include <NorvaBusComms/Devices/BusMessages.h>
#include <NorvaBusComms/Devices/CommEventHandler.h>
#include <NorvaGlobal/DebugOutput.h>

#include <QCoreApplication>

namespace norva {

TCommEventHandler::TCommEventHandler(QObject* window, int device, std::uint32_t generation,
                                     const char* className)
    : mWindowHandle(window), mDevice(device), mGeneration(generation), mClassName(className) {
  DebugOutput(QStringLiteral("Created %1 thread.").arg(QLatin1String(mClassName)));
}

TCommEventHandler::~TCommEventHandler() {
  RequestStop();
  wait();
  DebugOutput(QStringLiteral("Destroyed %1 thread.").arg(QLatin1String(mClassName)));
}

void TCommEventHandler::Post(QEvent::Type type, std::intptr_t parameter) {
  if (QObject* window = mWindowHandle.load())
    QCoreApplication::postEvent(window, new TBusMessage(type, parameter, mGeneration));
}

void TCommEventHandler::PostError(int errorCode) {
  Post(ThreadCrashMessage, errorCode);
  mTerminated = true;
}

void TCommEventHandler::RequestStop() {
  mWindowHandle = nullptr;
  mTerminated = true;
  mWake.Signal();
}

}  // namespace norva
