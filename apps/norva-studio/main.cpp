// Norva Studio: design keypads against the IR library and try them on the installation, on the
// runtime library's public API.
#include "StudioWindow.h"

#include <NorvaGlobal/Gui/QtUIServices.h>
#include <NorvaGlobal/UIServices.h>

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Norva Studio"));
  QCommandLineParser options;
  options.setApplicationDescription(QStringLiteral(
      "Designs keypads against the IR library and tries them on the installation. With no link "
      "named, it talks to a simulated amplifier of its own."));
  options.addHelpOption();
  const QCommandLineOption serial(QStringLiteral("serial"), QStringLiteral("Serial port to open."),
                                  QStringLiteral("DEVICE"));
  const QCommandLineOption tcp(QStringLiteral("tcp"), QStringLiteral("Device on the network."),
                               QStringLiteral("HOST:PORT"));
  const QCommandLineOption usb(QStringLiteral("usb"),
                               QStringLiteral("First recognised USB device."));
  const QCommandLineOption library(QStringLiteral("library"),
                                   QStringLiteral("IR library file to open (by default the "
                                                  "window starts with recent libraries)."),
                                   QStringLiteral("FILE"));
  const QCommandLineOption publicLibrary(QStringLiteral("public"),
                                         QStringLiteral("Open the library as the public one, with "
                                                        "the built-in makes, read-only."));
  options.addOptions({serial, tcp, usb, library, publicLibrary});
  // Bad options are told in one line with exit code 2, as the norva tool tells them.
  const auto refuse = [](const QString& why) {
    std::fprintf(stderr, "norva-studio: %s\n", qPrintable(why));
    return 2;
  };
  if (!options.parse(QApplication::arguments())) return refuse(options.errorText());
  if (options.isSet(QStringLiteral("help"))) options.showHelp();  // exits with code 0
  if (!options.positionalArguments().isEmpty())
    return refuse(QStringLiteral("unexpected argument %1").arg(options.positionalArguments()[0]));
  if (int(options.isSet(serial)) + int(options.isSet(tcp)) + int(options.isSet(usb)) > 1)
    return refuse(QStringLiteral("name one link: --serial DEVICE, --tcp HOST:PORT or --usb"));
  if (options.isSet(publicLibrary) && !options.isSet(library))
    return refuse(QStringLiteral("--public needs the library: --library FILE"));

  norva::TQtUIServices services;
  const norva::TScopedUIServices installed(services);
  studio::TStudioWindow window;
  // With no library named the window starts on its first page: what to do, recent files.
  if (options.isSet(library))
    window.OpenLibrary(options.value(library), options.isSet(publicLibrary));
  window.show();
  window.OfferRecovery();
  if (options.isSet(serial))
    window.Link().ConnectSerial(options.value(serial));
  else if (options.isSet(tcp))
    window.Link().ConnectEthernet(options.value(tcp));
  else if (options.isSet(usb))
    window.Link().ConnectUsb();
  else
    window.Link().ConnectSimulator();
  return QApplication::exec();
}
