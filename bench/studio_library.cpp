// The studio's IR library panel: opening a public database that holds 100,000 user commands and
// showing its tree, which an installer should see within one second.
#include <LibraryPanel.h>

#include <IR/IR.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QCoreApplication>
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

void OpenAndShowTree(benchmark::State& state) {
  static const TLibraryFile file;
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

}  // namespace
