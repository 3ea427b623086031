#pragma once
// A bus user that watches whether bytes can reach the device, so that the live commands can say
// when a link drops and comes back, and can tell an exchange that lost its link from one that
// did not.

#include <NorvaBusComms/Devices/BusComms.h>

#include <functional>

namespace norva::cli {

class TLinkWatch : public TNorvaBusUser {
 public:
  // `changed` hears every change of the link's state, with the new state.
  TLinkWatch(TNorvaBusComms& bus, std::function<void(bool up)> changed);
  ~TLinkWatch() override;
  TLinkWatch(const TLinkWatch&) = delete;
  TLinkWatch& operator=(const TLinkWatch&) = delete;

  // Looks at the link now (changes the bus does not announce, such as a serial adapter found gone
  // by CheckConnections).
  void Check();
  // How often the link went down while watched.
  int Drops() const { return mDrops; }

  void ConnectionChange() override { Check(); }

 private:
  TNorvaBusComms& mBus;
  std::function<void(bool)> mChanged;
  bool mUp;
  int mDrops = 0;
};

}  // namespace norva::cli
