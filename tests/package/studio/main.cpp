// The studio's window built against the installed package: it opens, connects to the simulated
// amplifier it starts itself, and hears the echo of a command it sends.
#include <StudioWindow.h>

#include <Testing/RecordingUIServices.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QSettings>
#include <QTemporaryDir>

#include <cstdio>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QTemporaryDir folder;
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.filePath("settings"));
  norva::TRecordingUIServices services;
  const norva::TScopedUIServices installed(services);
  studio::TStudioWindow window;
  window.OpenLibrary(folder.filePath("IR.xml"), true);
  if (!window.Link().ConnectSimulator()) return 1;
  window.BusView()->Send(norva::BuildCommandPacket(0x03, 5));
  QElapsedTimer waited;
  waited.start();
  while (window.Link().Simulator()->Received().empty() && waited.elapsed() < 5000)
    QApplication::processEvents(QEventLoop::AllEvents, 10);
  if (window.Link().Simulator()->Received().empty()) {
    std::fprintf(stderr, "the studio's packet never reached the simulator\n");
    return 1;
  }
  std::puts("studio built on the installed package OK");
  return 0;
}
