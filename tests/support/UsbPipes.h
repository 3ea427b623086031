#pragma once
// What every simulated or emulated amplifier interface must show: interface 0 with the four bulk
// pipes of the installation's devices, 64-byte packets, and nothing beyond them.

#include <NorvaBusComms/UsbPipes.h>
#include <libraries/WINUSB.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <vector>

namespace norva::testing {

inline void ExpectTheFourBulkPipes(TWinUsbInterface& usb) {
  TUsbInterfaceDescriptor descriptor;
  ASSERT_TRUE(usb.QueryInterfaceSettings(0, descriptor));
  EXPECT_EQ(descriptor.InterfaceNumber, 0);
  EXPECT_EQ(descriptor.NumEndpoints, 4);
  std::vector<std::uint8_t> ids;
  for (std::uint8_t index = 0; index < descriptor.NumEndpoints; ++index) {
    TWinUsbPipeInformation pipe;
    ASSERT_TRUE(usb.QueryPipe(0, index, pipe));
    EXPECT_EQ(pipe.PipeType, TUsbPipeType::Bulk);
    EXPECT_EQ(pipe.MaximumPacketSize, 64);
    ids.push_back(pipe.PipeId);
  }
  EXPECT_EQ(ids,
            (std::vector<std::uint8_t>{DataInPipe, NotifyInPipe, DataOutPipe, CommandOutPipe}));
  TWinUsbPipeInformation beyond;
  EXPECT_FALSE(usb.QueryPipe(0, 4, beyond));
  EXPECT_EQ(usb.LastError(), ENOENT);
  EXPECT_FALSE(usb.QueryInterfaceSettings(1, descriptor));
  EXPECT_EQ(usb.LastError(), ENOENT);
}

}  // namespace norva::testing
