#pragma once
// Bus communications: command packets and their text form, USB notification frames, the packet
// engine with echo recognition and delivery to users, and the transmit seam.

#include <NorvaBusComms/BusTextParser.h>
#include <NorvaBusComms/BusTransport.h>
#include <NorvaBusComms/BusUser.h>
#include <NorvaBusComms/CommandPacket.h>
#include <NorvaBusComms/CommsTypes.h>
#include <NorvaBusComms/NotificationFraming.h>
#include <NorvaBusComms/PacketEngine.h>
#include <NorvaBusComms/TXItem.h>
