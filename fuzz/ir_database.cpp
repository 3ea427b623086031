// Arbitrary bytes as an IR database file: reading never fails (a malformed file is reported and
// loads nothing), and what is then saved elsewhere reads back into a database that saves the same.
#include <IR_Database/IR_Database.h>
#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdlib>

namespace {

// Boxes go nowhere: a fuzz run reports thousands of bad files.
class TSilentUIServices : public norva::TUIServices {
 public:
  norva::TMessageResult MessageBox(const QString&, const QString&, norva::TMessageIcon,
                                   norva::TMessageButtons buttons) override {
    return norva::UnattendedAnswer(buttons);
  }
  void SetBusyCursor(bool) override {}
  void EmptyClipboard() override {}
  bool ClipboardHoldsData() override { return false; }
  QString ClipboardText() override { return QString(); }
  void SetClipboardText(const QString&) override {}
};

QString TemporaryPath(const char* name) {
  return QDir::temp().filePath(QStringLiteral("norva-fuzz-%1-%2").arg(getpid()).arg(name));
}

QByteArray ReadFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static TSilentUIServices services;
  static const bool ready = [] {
    norva::SetUIServices(&services);
    norva::DisableUndo();
    return true;
  }();
  (void)ready;
  const QString input = TemporaryPath("input.xml");
  const QString output = TemporaryPath("output.xml");
  {
    QFile file(input);
    if (!file.open(QIODevice::WriteOnly)) std::abort();
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
  }
  norva::TIRDB database(input, false);
  norva::TIRStream probe;
  probe.SetModulationPeriod(316);
  (void)database.GetNames(probe);
  database.AssignTo(&database);
  database.SaveAs(output);  // a file that did not load is never saved over, only elsewhere
  const QByteArray saved = ReadFile(output);
  norva::TIRDB reread(output, false);
  reread.Save();
  if (ReadFile(output) != saved) std::abort();
  return 0;
}
