// The studio's IR library panel: opening a public database that holds 100,000 user commands and
// showing it with every panel of the window, which an installer should see within one second; a
// keystroke in the search box over those commands, answered within 50 ms; the stream picture of
// the details pane, painted within one frame (16 ms).
#include <LibraryPanel.h>
#include <StreamPicture.h>
#include <StudioWindow.h>

#include <IR/IR.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QCoreApplication>
#include <QImage>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int Commands = 100000;

// 100,000 serial and network commands in 100 models, written once.
struct TLibraryFile {
  TLibraryFile() {
    norva::DisableUndo();
    norva::TIRDB database(Path(), false);
    norva::TMake* make = database.AddNewMake();
    make->SetName(QStringLiteral("Acme"));
    for (int i = 0; i < Commands; ++i) {
      if (i % 1000 == 0) make->AddNewModel()->SetName(QStringLiteral("Model %1").arg(i / 1000));
      auto* command = static_cast<norva::TRS232Command*>(
          make->GetModel(i / 1000)->AddNewCommandObject(&norva::TRS232Command::staticMetaObject));
      command->SetName(QStringLiteral("Lamp %1").arg(i));
      command->SetDataString(QStringLiteral("2A4C%1").arg(i % 256, 2, 16, QLatin1Char('0')));
    }
    database.Save();
  }
  QString Path() const { return folder.filePath(QStringLiteral("IR.xml")); }
  QTemporaryDir folder;
};

const TLibraryFile& LibraryFile() {
  static const TLibraryFile file;
  return file;
}

// The main window with every panel, shown; its settings kept beside the library file.
struct TShownWindow {
  TShownWindow() {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       LibraryFile().folder.filePath("settings"));
    window.show();
  }
  ~TShownWindow() { window.setWindowModified(false); }
  studio::TStudioWindow window;
};

void OpenAndShowTree(benchmark::State& state) {
  const TLibraryFile& file = LibraryFile();
  for (auto _ : state) {
    norva::TIRDB database(file.Path(), true);  // public: the built-in makes come first
    studio::TLibraryTree tree;
    tree.SetDatabase(&database);
    tree.expandAll();  // every model open: the worst case for the first paint
    tree.show();
    QCoreApplication::processEvents();  // laid out and painted
    benchmark::DoNotOptimize(tree.topLevelItemCount());
    tree.SetDatabase(nullptr);
  }
  state.counters["commands"] = Commands;
}
BENCHMARK(OpenAndShowTree)->Unit(benchmark::kMillisecond);

// The main window, every panel shown, opening the library as the Library menu does.
void OpenInTheWindow(benchmark::State& state) {
  TShownWindow shown;
  studio::TStudioWindow& window = shown.window;
  for (auto _ : state) {
    window.OpenLibrary(LibraryFile().Path(), true);
    window.Library()->expandAll();
    QCoreApplication::processEvents();  // laid out and painted
    benchmark::DoNotOptimize(window.Library()->topLevelItemCount());
  }
  state.counters["commands"] = Commands;
}
BENCHMARK(OpenInTheWindow)->Unit(benchmark::kMillisecond);

// One keystroke: the query grows by a letter or loses one, and the results are shown. The first
// search after opening gathers the commands' text and is left out.
void SearchKeystroke(benchmark::State& state) {
  TShownWindow shown;
  studio::TStudioWindow& window = shown.window;
  window.OpenLibrary(LibraryFile().Path(), true);
  QLineEdit& search = *window.Browser()->SearchField();
  search.setText(QStringLiteral("x"));
  const QStringList typed = {QStringLiteral("lamp 9"), QStringLiteral("lamp 99"),
                             QStringLiteral("lamp 9"), QStringLiteral("model 4")};
  int next = 0;
  for (auto _ : state) {
    search.setText(typed[next++ % typed.size()]);
    QCoreApplication::processEvents();  // the results laid out and painted
    benchmark::DoNotOptimize(window.Browser()->Results().rowCount());
  }
  state.counters["commands"] = Commands;
}
BENCHMARK(SearchKeystroke)->Unit(benchmark::kMillisecond);

// The first search after opening gathers every command's text, its decode included: over 10,000
// learnt codes of one protocol (a library of infra-red codes pays the protocol engine once per
// code here).
void FirstSearchOverLearntCodes(benchmark::State& state) {
  constexpr int Codes = 10000;
  const norva::TUndoSuspended undoOff;
  norva::TIRDB database(QString(), false);
  norva::TModel* model = database.GetOrAddModel(QStringLiteral("Acme"), QStringLiteral("TV"));
  for (int i = 0; i < Codes; ++i) {
    norva::TIRStream code;
    code.SetData(norva::EncodeIRStream(u"NEC1", {i % 256, std::nullopt, i / 256, std::nullopt}));
    code.SetName(QStringLiteral("Key %1").arg(i));
    model->AddNewCommandObject(&code);
  }
  studio::TLibraryTree tree;
  tree.SetDatabase(&database);
  for (auto _ : state) {
    tree.Refresh();  // the text gathered anew
    benchmark::DoNotOptimize(tree.Find(u"nec1 d=7").size());
  }
  tree.SetDatabase(nullptr);
  state.counters["codes"] = Codes;
}
BENCHMARK(FirstSearchOverLearntCodes)->Unit(benchmark::kMillisecond);

// The picture of a stream with the most pairs a stream holds, a word sent once and one repeated,
// painted at the width of a wide details pane.
void PaintStreamPicture(benchmark::State& state) {
  QList<double> once;
  QList<double> repeat;
  for (int i = 0; i < 79; ++i) once << 560 << (i % 2 ? 1690 : 560);
  once << 560 << 20000;
  for (int i = 0; i < 79; ++i) repeat << 560 << (i % 3 ? 1690 : 560);
  repeat << 560 << 90000;
  studio::TStreamPicture picture;
  picture.SetStream(norva::WordsStream(38000, once, repeat));
  picture.resize(1200, 96);
  QImage image(picture.size(), QImage::Format_ARGB32_Premultiplied);
  for (auto _ : state) {
    picture.render(&image);
    benchmark::DoNotOptimize(image.constBits());
  }
  state.counters["pulses"] = static_cast<double>(picture.Pulses().size());
}
BENCHMARK(PaintStreamPicture)->Unit(benchmark::kMillisecond);

}  // namespace
