// Takes the pictures of the studio's main window that the documentation shows, by driving the
// window as an installer would: the first page with the files used last, codes imported into a
// library and another capture of one of them pasted (named after the same button), with its
// details and stream picture; a search; a code made from a protocol; commands bound to the keypad's
// buttons, a native code sent to the simulator with the bus panel showing the answers, a panel
// unpinned.
// Usage: norva-studio-screenshots OUTPUT_FOLDER (docs/images/ for the documentation's copies).
#include "ProtocolCodeDialog.h"
#include "StudioWindow.h"

#include <IR/IR.h>
#include <OrbGraphics/OrbGraphics.h>
#include <Testing/RecordingUIServices.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <cstdio>

namespace {

// Codes of real remote controls (tests/data/ir/pronto-codes.tsv).
const char NamedCodes[] =
    "Volume+\t0000 006B 000D 000C 004A 0025 0025 0025 0025 0025 0025 0013 0013 0013 0013 0025 "
    "0025 0013 0013 0025 0013 0013 0013 0013 0025 0013 0013 0025 0013 073D 004A 0025 "
    "0025 0025 0025 0025 0013 0013 0025 0013 0013 0025 0025 0013 0013 0025 0013 0013 "
    "0025 0025 0025 0025 0013 073D\n"
    "Volume-\t0000 006B 000C 000D 004A 0025 0025 0025 0025 0025 0025 0013 0013 0025 0013 0013 "
    "0025 0013 0013 0025 0013 0013 0025 0025 0025 0025 0013 073D 004A 0025 0025 0025 "
    "0025 0025 0013 0013 0025 0025 0013 0013 0025 0013 0013 0025 0013 0013 0013 0013 "
    "0013 0013 0025 0025 0013 073D\n"
    "mute\t0000 006B 000E 000E 004A 0025 0025 0025 0025 0025 0025 0013 0013 0013 0013 0013 "
    "0013 0013 0013 0013 0013 0025 0013 0013 0025 0013 0013 0013 0013 0025 0013 073D "
    "004A 0025 0025 0025 0025 0025 0013 0013 0025 0013 0013 0013 0013 0013 0013 0013 "
    "0013 0025 0013 0013 0013 0013 0025 0013 0013 0025 0013 073D\n"
    "power_off\t0000 0070 0000 0032 0080 0040 0010 0010 0010 0030 0010 0010 0010 0010 0010 0010 "
    "0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 "
    "0010 0030 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0030 "
    "0010 0030 0010 0010 0010 0030 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 "
    "0010 0010 0010 0010 0010 0010 0010 0030 0010 0030 0010 0030 0010 0030 0010 0030 "
    "0010 0030 0010 0010 0010 0010 0010 0030 0010 0030 0010 0030 0010 0030 0010 0010 "
    "0010 0010 0010 0010 0010 0030 0010 0ACD\n"
    "power_on\t0000 0070 0000 0032 0080 0040 0010 0010 0010 0030 0010 0010 0010 0010 0010 0010 "
    "0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 "
    "0010 0030 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 0030 "
    "0010 0030 0010 0010 0010 0030 0010 0010 0010 0010 0010 0010 0010 0010 0010 0010 "
    "0010 0010 0010 0010 0010 0010 0010 0010 0010 0030 0010 0030 0010 0030 0010 0030 "
    "0010 0030 0010 0010 0010 0010 0010 0010 0010 0030 0010 0030 0010 0030 0010 0010 "
    "0010 0010 0010 0010 0010 0030 0010 0ACD\n"
    "HDMI 2\t0000 006B 0000 001A 008E 008E 0012 0047 0012 0047 0012 0047 0012 0047 0012 0047 "
    "0012 0024 0012 0047 0012 0047 0012 0024 0012 0047 0012 0047 0012 0024 0012 0024 "
    "0012 0024 0012 0024 0012 0024 0012 0024 0012 0047 0012 0024 0012 0024 0012 0047 "
    "0012 0024 0012 0024 0012 0047 0012 011D\n"
    "HDMI 3\t0000 006B 0000 001A 008E 008E 0012 0047 0012 0047 0012 0047 0012 0047 0012 0047 "
    "0012 0024 0012 0047 0012 0047 0012 0024 0012 0047 0012 0024 0012 0047 0012 0024 "
    "0012 0024 0012 0024 0012 0024 0012 0024 0012 0047 0012 0024 0012 0024 0012 0047 "
    "0012 0024 0012 0047 0012 0024 0012 011D\n";

// "HDMI 2" captured once more: the lead-in came out a little longer and the gap a little shorter.
const char HDMI2Again[] =
    "0000 006B 0000 001A 0098 0084 0012 0047 0012 0047 0012 0047 0012 0047 0012 0047 "
    "0012 0024 0012 0047 0012 0047 0012 0024 0012 0047 0012 0047 0012 0024 0012 0024 "
    "0012 0024 0012 0024 0012 0024 0012 0024 0012 0047 0012 0024 0012 0024 0012 0047 "
    "0012 0024 0012 0024 0012 0047 0012 011D";

void Pump(int ms) {
  QElapsedTimer timer;
  timer.start();
  while (timer.elapsed() < ms) QApplication::processEvents(QEventLoop::AllEvents, 10);
}

bool Save(QWidget& window, const QDir& folder, const char* name) {
  Pump(100);
  const QString path = folder.filePath(QString::fromLatin1(name));
  if (!window.grab().save(path)) {
    std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    return false;
  }
  std::printf("wrote %s\n", qPrintable(path));
  return true;
}

norva::TCommandObject* Command(studio::TStudioWindow& window, const QString& name) {
  const QList<QTreeWidgetItem*> items =
      window.Library()->findItems(name, Qt::MatchRecursive | Qt::MatchExactly);
  if (items.isEmpty()) return nullptr;
  window.Library()->setCurrentItem(items.first());
  return window.Library()->CurrentCommand();
}

bool Bind(studio::TStudioWindow& window, int button, const QString& command,
          const QString& caption) {
  const norva::TCommandObject* found = Command(window, command);
  if (!found) {
    std::fprintf(stderr, "no command %s in the library\n", qPrintable(command));
    return false;
  }
  const QList<norva::TButtonClass> classes = found->GetButtonClasses();
  window.KeypadView()->Bind(button, found->GetGUIDString(), found->GetName(),
                            classes.isEmpty() ? norva::TButtonClass() : classes.first());
  window.KeypadView()->SetCaption(button, caption);
  return true;
}

// The installer's own makes opened, the built-in ones (listed after them) left closed.
void ExpandOwnMakes(studio::TStudioWindow& window) {
  for (const char* make : {"Acme", "User"}) {
    for (QTreeWidgetItem* item :
         window.Library()->findItems(QString::fromLatin1(make), Qt::MatchExactly)) {
      item->setExpanded(true);
      for (int i = 0; i < item->childCount(); ++i) item->child(i)->setExpanded(true);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: norva-studio-screenshots OUTPUT_FOLDER\n");
    return 2;
  }
  const QDir output(QString::fromLocal8Bit(argv[1]));
  if (!QDir().mkpath(output.path())) return 1;
  QTemporaryDir scratch;
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, scratch.filePath("settings"));
  norva::TRecordingUIServices services;  // no boxes: nothing here fails
  const norva::TScopedUIServices installed(services);
  const QString library = scratch.filePath("IR.xml");
  QFile codes(scratch.filePath("tv.tsv"));
  if (!codes.open(QIODevice::WriteOnly) || codes.write(NamedCodes) < 0) return 1;
  codes.close();

  const auto chooseFile = [&](studio::TFileRole role) {
    return role == studio::TFileRole::ImportCodes ? codes.fileName()
                                                  : scratch.filePath("Lounge.keycfg");
  };
  // An earlier day's work: a library opened and a keypad saved, so the first page lists them.
  {
    studio::TStudioWindow earlier;
    earlier.SetFileChooser(chooseFile);
    earlier.OpenLibrary(library, false);
    if (!earlier.FileSaveAs()) return 1;
  }
  studio::TStudioWindow window;
  window.SetFileChooser(chooseFile);
  QStringList answers = {"Acme", "TV 55X"};
  window.SetTextAsker([&](const QString&, const QString&) { return answers.takeFirst(); });
  window.resize(1280, 820);
  // The first window was laid out for the offscreen screen's size; give the library its share.
  window.resizeDocks({window.LibraryPanel()}, {500}, Qt::Horizontal);
  window.show();
  if (!Save(window, output, "studio-start.png")) return 1;

  // The installer's own library: a model added, a file of named codes imported, a code pasted.
  window.OpenLibrary(library, false);
  window.AddModel();
  window.ImportCodes();
  // Another capture of a code of the file pasted: the library names it after the same button.
  services.SetClipboardText(QString::fromLatin1(HDMI2Again));
  window.Library()->setCurrentItem(nullptr);  // into User / Learnt codes
  window.PasteHexCode();
  ExpandOwnMakes(window);
  if (!Save(window, output, "studio-library.png")) return 1;

  // A search over names, makes, models, button classes and decodes; a command found chosen.
  window.Browser()->SearchField()->setText(QStringLiteral("volume"));
  window.Browser()->ResultsView()->setCurrentIndex(window.Browser()->Results().index(0, 0));
  if (!Save(window, output, "studio-search.png")) return 1;
  window.Browser()->SearchField()->clear();

  // A code from a protocol, its hex code shown before it is added.
  studio::TProtocolCodeDialog protocol(&window);
  protocol.Protocol()->setCurrentText(QStringLiteral("NEC1"));
  protocol.Parameter('D')->setText(QStringLiteral("4"));
  protocol.Parameter('F')->setText(QStringLiteral("8"));
  protocol.show();
  if (!Save(protocol, output, "studio-protocol.png")) return 1;
  protocol.hide();

  // Opened with the built-in makes, bound to the keypad's buttons.
  window.OpenLibrary(library, true);
  if (!Bind(window, 0, "power_on", "TV on") || !Bind(window, 1, "power_off", "TV off") ||
      !Bind(window, 2, "Volume+", "Louder") || !Bind(window, 3, "Volume-", "Softer") ||
      !Bind(window, 4, "HDMI 2", "Apple TV") || !Bind(window, 5, "Standby", "All off"))
    return 1;
  window.KeypadView()->Select(5);
  window.ShowState();
  window.Library()->collapseAll();
  QTreeWidgetItem* standby = window.Library()->ItemOf(Command(window, "Standby"));
  window.Library()->setCurrentItem(standby);
  window.Library()->scrollToItem(standby);  // its groups opened
  if (!Save(window, output, "studio-keypad.png")) return 1;

  // The simulator echoes and acknowledges the native code the selected button sends, reports a
  // zone's status and a key press.
  if (!window.Link().ConnectSimulator()) return 1;
  Pump(200);
  if (!window.SendSelectedCommand()) return 1;
  Pump(300);
  window.Link().Simulator()->SendStatus(5);
  window.Link().Simulator()->SendKeypress(5, 3, 0);
  Pump(300);
  window.BusView()->Log().Flush();
  window.ShowState();
  if (!Save(window, output, "studio-bus.png")) return 1;
  // A burst scrolls the first packets away; the filter finds the echo again.
  window.Link().Simulator()->SendBurst(500);
  Pump(600);
  window.BusView()->Filter()->setText(QStringLiteral("echo"));
  if (!Save(window, output, "studio-bus-filtered.png")) return 1;
  // The library unpinned: hidden at the window's edge behind its tab.
  window.BusView()->Filter()->clear();
  window.LibraryPanel()->SetPinned(false);
  if (!Save(window, output, "studio-unpinned.png")) return 1;
  window.setWindowModified(false);  // no close prompt in a program that takes pictures
  return 0;
}
