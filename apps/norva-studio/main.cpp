// Norva Studio: design keypads against the IR library, on the runtime library's public API.
#include "StudioWindow.h"

#include <NorvaGlobal/Gui/QtUIServices.h>
#include <NorvaGlobal/UIServices.h>
#include <Utils/Folders.h>

#include <QApplication>
#include <QDir>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Norva Studio"));
  norva::TQtUIServices services;
  const norva::TScopedUIServices installed(services);
  studio::TStudioWindow window;
  window.OpenLibrary(QDir(norva::GetMyDocumentsPath()).filePath(QStringLiteral("IR.xml")), false);
  window.show();
  return QApplication::exec();
}
