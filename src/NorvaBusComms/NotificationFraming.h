#pragma once
// Cuts the binary frames of the USB notification channel. The first byte of a frame says its kind:
//   4  code, n, Cmd, Zone, n-2 data bytes: a command packet
//   3  code, payload to the end of the buffer: an IR learn event
//   2, 5  code, text, terminating zero: a log event (both reported as usb_log_event)
// Anything else stops the cut and stays buffered.

#include <NorvaBusComms/CommandPacket.h>
#include <NorvaGlobal/Vocabulary.h>

#include <QByteArray>

#include <functional>
#include <vector>

namespace norva {

using TNotificationHandler = std::function<void(TUSBNotification kind, const QByteArray& body)>;

// Cuts `buffer` from the front: packets are appended to `packets` (stamped `now`), other
// notifications go to `notify` at once, in order. What cannot be cut yet is left in `buffer`.
// A command frame whose length byte is below 2 cannot hold a command and zone; it is dropped whole.
void CutNotificationFrames(QByteArray& buffer, TTickCount now, std::vector<TCommandPacket>& packets,
                           const TNotificationHandler& notify);

}  // namespace norva
