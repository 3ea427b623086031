// The USB object exchange of the packet engine: its status, who is told of changes, and the waits
// for the device's answers.
#include <NorvaBusComms/PacketEngine.h>
#include <NorvaGlobal/EventPump.h>
#include <NorvaGlobal/UIServices.h>

namespace norva {

void TNorvaPacketEngine::SetUSBCommandStatus(TUSBCommandStatus newStatus,
                                             std::shared_ptr<TIUSBCommandUser> user) {
  const TUSBCommandStatus oldStatus = mUSBCommandStatus;
  if (newStatus != oldStatus && mUSBCommandUser) {
    const TCallOut callOut(*this);
    const std::shared_ptr<TIUSBCommandUser> current = mUSBCommandUser;  // may let go of itself
    current->USBCommandStatusChange(*this, newStatus, oldStatus);
  }
  mUSBCommandStatus = newStatus;
  if (newStatus != NoUSBCommand)
    mUSBCommandUser = std::move(user);
  else
    mUSBCommandUser.reset();
}

bool TNorvaPacketEngine::WaitUSBCommandResponse(TTickCount timeoutMs, bool canIgnoreError) {
  const TCallOut callOut(*this);
  mLastRX = GetTickCount();
  while (mUSBCommandStatus != NoUSBCommand) {
    SleepAndPumpEvents(WaitStepMs);
    // Raw data renews mLastRX: a long transfer whose data keep coming never times out.
    if (TicksSince(mLastRX) > timeoutMs) {
      SetUSBCommandStatus(NoUSBCommand, nullptr);
      mUSBCommandResult = USBCommand_Failure;
      if (!canIgnoreError) {
        UIServices().MessageBox(QStringLiteral("Timeout waiting for response."),
                                QStringLiteral("Error"), TMessageIcon::Exclamation,
                                TMessageButtons::OK);
        return false;
      }
      return UIServices().MessageBox(
                 QStringLiteral("Timeout waiting for response.\r\n\r\nTry to continue?"),
                 QStringLiteral("Error"), TMessageIcon::Question,
                 TMessageButtons::YesNo) == TMessageResult::Yes;
    }
    if (mUSBCommandStatus != NoUSBCommand && !IsOpen()) {
      UIServices().MessageBox(QStringLiteral("Connection lost."), QStringLiteral("Error"),
                              TMessageIcon::Exclamation, TMessageButtons::OK);
      SetUSBCommandStatus(NoUSBCommand, nullptr);
      mUSBCommandResult = USBCommand_Failure;
      return false;
    }
  }
  return true;
}

void TNorvaPacketEngine::WaitForCommands(TTickCount timeoutMs, bool commandsExpected) {
  const TCallOut callOut(*this);
  if (commandsExpected) mTimeLastCommand = GetTickCount();
  while (TicksSince(mTimeLastCommand) < timeoutMs) SleepAndPumpEvents(WaitStepMs);
}

}  // namespace norva
