#pragma once
// A packet engine for an amplifier on RS232 (bus text, echoes expected) over a recording
// transport, with one user of the suite's choosing and a clock driven by hand.

#include <NorvaBusComms/PacketEngine.h>

#include "support/FakeClock.h"
#include "support/RecordingTransport.h"

#include <gtest/gtest.h>

namespace norva::testing {

template <typename TUser>
class TEngineFixture : public ::testing::Test {
 protected:
  TEngineFixture() {
    engine.SetTransport(&transport);
    engine.SetSelectedCommsInterface(RS232Interface);
    engine.SetConnectedDeviceType(NorvaAmp);
    engine.AddUser(&user);
  }

  TFakeClock clock;
  TRecordingTransport transport;
  TNorvaPacketEngine engine;
  TUser user{&engine};
};

}  // namespace norva::testing
