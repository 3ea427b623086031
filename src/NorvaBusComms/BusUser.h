#pragma once
// The role of a bus user: what the bus delivers packets, raw data and notifications to. The bus
// client form implements it; each default here is what a form does unless it overrides it.

#include <NorvaBusComms/CommandPacket.h>
#include <NorvaGlobal/Vocabulary.h>

#include <QByteArray>

namespace norva {

class TNorvaBusUser {
 public:
  virtual ~TNorvaBusUser() = default;

  // Every packet received, echoes included (the bus's ProcessingEcho tells which).
  virtual void ProcessCommand(const TCommandPacket& /*packet*/) {}
  // Raw data offered in turn to each user; return true to take charge of it, leaving in `bytes`
  // whatever should be kept for the next arrival.
  virtual bool ProcessRawData(QByteArray& /*bytes*/) { return false; }
  // Return true to consume the notification, so later users do not see it.
  virtual bool ProcessNotification(TUSBNotification /*kind*/, const QByteArray& /*data*/) {
    return false;
  }
  virtual void ConnectionChange() {}
  virtual void Disconnected() {}
};

}  // namespace norva
