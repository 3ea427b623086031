#pragma once
// Drives the tick count by hand for one test; restores the system clock on exit.

#include <NorvaGlobal/TickCount.h>

namespace norva::testing {

class TFakeClock {
 public:
  explicit TFakeClock(TTickCount start = 100000);
  ~TFakeClock();
  TFakeClock(const TFakeClock&) = delete;
  TFakeClock& operator=(const TFakeClock&) = delete;

  void Advance(TTickCount ms);
  void Set(TTickCount now);

 private:
  TTickSource mPrevious;
};

}  // namespace norva::testing
