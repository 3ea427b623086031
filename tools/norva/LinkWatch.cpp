#include "LinkWatch.h"

namespace norva::cli {

TLinkWatch::TLinkWatch(TNorvaBusComms& bus, std::function<void(bool up)> changed)
    : mBus(bus), mChanged(std::move(changed)), mUp(bus.LinkUp()) {
  mBus.AddUser(this);
}

TLinkWatch::~TLinkWatch() { mBus.RemoveUser(this); }

void TLinkWatch::Check() {
  const bool up = mBus.LinkUp();
  if (up == mUp) return;
  mUp = up;
  if (!up) ++mDrops;
  if (mChanged) mChanged(up);
}

}  // namespace norva::cli
