// Whether the packet trace is written is decided while the library loads: a debugger that attaches
// or detaches before the first packet does not switch it.
#include <NorvaBusComms/NorvaBusComms.h>
#include <NorvaGlobal/NorvaGlobal.h>

#include <QStringList>

#include <gtest/gtest.h>

#include <cstdlib>

namespace norva {
namespace {

bool gDebuggerNow = false;
bool DebuggerNow() { return gDebuggerNow; }

// Runs in a process of its own, in which no packet has been sent or received yet. Exits with 0 when
// the first packet is traced as the start-up state says, whatever the debugger state is by then.
void ReceiveFirstPacketAfterTheDebuggerStateChanged() {
  const bool attachedAtLoad = IsDebuggerPresent();  // nothing has attached or detached since
  gDebuggerNow = !attachedAtLoad;
  SetDebuggerProbe(&DebuggerNow);

  QStringList lines;
  SetDebugOutputSink([&lines](const QString& line) { lines << line; });
  TNorvaPacketEngine engine;
  engine.SetSelectedCommsInterface(RS232Interface);
  engine.SetConnectedDeviceType(NorvaAmp);
  engine.ReceiveBytes(SerialRXKind, "0B0523\r\n");
  const bool traced = lines.size() == 1;
  // _Exit: the outcome is the exit code, nothing else of this process matters.
  std::_Exit(traced == attachedAtLoad && DebuggerAttachedAtStartUp() == attachedAtLoad ? 0 : 1);
}

TEST(PacketTrace, DecidedWhenTheLibraryLoadsNotAtTheFirstPacket) {
  // "threadsafe" runs the test program afresh for this test alone, so no earlier test has sent a
  // packet in it.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(ReceiveFirstPacketAfterTheDebuggerStateChanged(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace norva
