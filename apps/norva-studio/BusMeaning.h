#pragma once
// What a packet on the bus means, in the installation's vocabulary: a native command by its name
// ("Standby"), the bus's own requests and reports, and acknowledgements of either.

#include <NorvaBusComms/CommandPacket.h>

#include <QString>

namespace studio {

// What a packet of `command` carrying `data` means: "Standby", "status request", "key 3 pressed
// (repeat 1)", "acknowledges Standby"; "" when the vocabulary has no name for it.
QString BusPacketMeaning(norva::TCommand command, const QByteArray& data);

}  // namespace studio
