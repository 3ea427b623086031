#pragma once
// Drives the tick count, and the date and time of day, by hand for one test; each restores the
// system clock on exit.

#include <NorvaGlobal/Clock.h>
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

class TFakeDateTime {
 public:
  explicit TFakeDateTime(const QDateTime& now);
  ~TFakeDateTime();
  TFakeDateTime(const TFakeDateTime&) = delete;
  TFakeDateTime& operator=(const TFakeDateTime&) = delete;

  void AdvanceMilliseconds(qint64 ms);
  void Set(const QDateTime& now);

 private:
  TClockSource mPrevious;
};

}  // namespace norva::testing
