// Arbitrary bytes as a keypad configuration file, read by the example keypad type: a file is read
// whole or reported, the document is clean afterwards whichever way it went, and what it then
// saves reads back into the same file.
#include <KeypadDevice/KeypadDevice.h>
#include <KeypadDevice/WallKeypad.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QDir>
#include <QFile>

#include <unistd.h>

#include <cstdint>
#include <cstdlib>

namespace {

QString TemporaryPath(const char* name) {
  return QDir::temp().filePath(QStringLiteral("norva-fuzz-%1-%2").arg(getpid()).arg(name));
}

void WriteFile(const QString& path, const char* data, std::size_t size) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) std::abort();
  file.write(data, static_cast<qint64>(size));
}

QByteArray ReadFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool ready = [] {
    norva::DisableUndo();  // nothing here is ever undone
    return true;
  }();
  (void)ready;
  const QString input = TemporaryPath("input.keycfg");
  const QString output = TemporaryPath("output.keycfg");
  WriteFile(input, reinterpret_cast<const char*>(data), size);

  norva::TWallKeypad keypad;
  keypad.Button(0).SetCaption(QStringLiteral("Before"));
  bool loaded = false;
  try {
    loaded = keypad.LoadFile(input);
  } catch (const norva::ENorvaError&) {
    // Reported; the document must still be usable, which the save below shows.
  }
  if (loaded && (keypad.GetNeedsSaving() || keypad.GetNeedsAutoSaving())) std::abort();

  keypad.SetName(output);
  if (!keypad.FileSave()) std::abort();
  const QByteArray saved = ReadFile(output);
  norva::TWallKeypad reread;
  if (!reread.LoadFile(output)) std::abort();
  reread.SetName(output);
  if (!reread.FileSave() || ReadFile(output) != saved) std::abort();
  return 0;
}
