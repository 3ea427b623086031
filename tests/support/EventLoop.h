#pragma once
// Waiting in tests the way the UI thread waits: pumping events until something has happened.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

namespace norva::testing {

// Pumps events until `done()` or `timeoutMs` passed; returns `done()`. Generous time-outs only
// guard against a hang: the tests assert on what happened, never on how long it took.
template <typename Predicate>
bool PumpUntil(Predicate done, int timeoutMs = 5000) {
  QElapsedTimer timer;
  timer.start();
  while (!done()) {
    if (timer.elapsed() > timeoutMs) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    QThread::usleep(200);
  }
  return true;
}

// Pumps events for a while, for things that must NOT happen.
inline void PumpFor(int ms) {
  PumpUntil([] { return false; }, ms);
}

}  // namespace norva::testing
