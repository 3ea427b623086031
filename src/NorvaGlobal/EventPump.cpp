#include <NorvaGlobal/EventPump.h>

#include <QCoreApplication>
#include <QThread>

namespace norva {

void SleepAndPumpEvents(TTickCount ms) {
  QThread::msleep(ms);
  QCoreApplication::processEvents();
}

}  // namespace norva
