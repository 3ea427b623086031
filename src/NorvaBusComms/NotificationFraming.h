#pragma once
// Cuts the binary frames of the USB notification channel. The first byte of a frame says its kind:
//   4  code, n, Cmd, Zone, n-2 data bytes: a command packet
//   3  code, payload to the end of the buffer: an IR learn event
//   2, 5  code, text, terminating zero: a log event (both reported as usb_log_event)
// A command frame or code-5 log text not yet complete waits for the next arrival, however the bytes
// were split. Any other first byte cannot start a frame: the bytes up to the next known code go.

#include <NorvaBusComms/CommandPacket.h>
#include <NorvaGlobal/Vocabulary.h>

#include <QByteArray>

#include <functional>
#include <vector>

namespace norva {

// The most a cut leaves in the buffer. A command frame is at most 257 bytes; a log text is one
// line of a device's log and comes in one 1024-byte transfer, so an unterminated text that has
// grown past four transfers is noise: it is dropped and the cut goes on with what follows.
inline constexpr qsizetype MaxHeldNotificationBytes = 4096;

using TNotificationHandler = std::function<void(TUSBNotification kind, const QByteArray& body)>;

// Cuts `buffer` from the front: packets are appended to `packets` (stamped `now`), other
// notifications go to `notify` at once, in order. What cannot be cut yet is left in `buffer`, never
// more than MaxHeldNotificationBytes. A command frame whose length byte is below 2 cannot hold a
// command and zone; it is dropped whole. Dropped noise is reported on the debug output.
void CutNotificationFrames(QByteArray& buffer, TTickCount now, std::vector<TCommandPacket>& packets,
                           const TNotificationHandler& notify);

// The most data bytes a command frame carries: its length byte counts Cmd and Zone too.
inline constexpr std::size_t MaxCommandFrameData = 253;

// The frames a device sends, as CutNotificationFrames reads them back. A packet with more than
// MaxCommandFrameData data bytes has no frame: the result is empty.
QByteArray EncodeCommandFrame(const TCommandPacket& packet);
// A code-5 log frame; `text` must hold no byte below 4, which would end it early.
QByteArray EncodeLogFrame(const QByteArray& text);

}  // namespace norva
