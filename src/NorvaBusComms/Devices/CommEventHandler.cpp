#include <NorvaBusComms/Devices/BusMessages.h>
#include <NorvaBusComms/Devices/CommEventHandler.h>
#include <NorvaGlobal/DebugOutput.h>

namespace norva {

TCommEventHandler::TCommEventHandler(QObject* window, int device, std::uint32_t generation,
                                     const char* className)
    : mWindowHandle(window), mDevice(device), mGeneration(generation), mClassName(className) {
  DebugOutput(BusLog(), QStringLiteral("Created %1 thread.").arg(QLatin1String(mClassName)));
}

TCommEventHandler::~TCommEventHandler() {
  RequestStop();
  Join();
  DebugOutput(BusLog(), QStringLiteral("Destroyed %1 thread.").arg(QLatin1String(mClassName)));
}

void TCommEventHandler::Start() {
  mThread = std::thread([this] { Execute(); });
}

void TCommEventHandler::Join() {
  if (mThread.joinable()) mThread.join();
}

void TCommEventHandler::Post(QEvent::Type type, std::intptr_t parameter) {
  if (QObject* window = mWindowHandle.load())
    TBusMessage::Post(window, type, parameter, mGeneration);
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
