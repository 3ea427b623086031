// The IR database: building a public database (target at most 50 ms), naming received codes from
// the index against walking the database (public, plus 10,000 user IR commands; target at most
// 10 us a call indexed), saving and reading 100,000 commands beside pugixml alone (target within
// three times), and heap bytes per built-in native stream.
#include <IR/IR.h>
#include <IR_Database/IR_Database.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <support/Corpus.h>
#include <support/PugixmlBaseline.h>

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

// A folder of this run's own: a database file left by an earlier run would be read and grown.
QString TemporaryPath(const char* name) {
  static const QTemporaryDir folder;
  return folder.filePath(QLatin1String(name));
}

int NativeStreamCount(const norva::TIRDB& database) {
  int count = 0;
  const auto countGroup = [&count](const auto& self, const norva::TNorvaGroup* group) -> void {
    count += group->GetCommandCount();
    for (int i = 0; i < group->GetChildObjectCount(); ++i) self(self, group->GetChildObject(i));
  };
  for (int m = 0; m < database.GetMakeCount(); ++m)
    if (const auto* make = qobject_cast<const norva::TNorvaIntegraMake*>(database.GetMake(m)))
      for (int g = 0; g < make->GetNorvaCommandGroupCount(); ++g)
        countGroup(countGroup, make->GetNorvaCommandGroup(g));
  return count;
}

void BuildPublicDatabase(benchmark::State& state) {
  norva::DisableUndo();
  int streams = 0;
  std::size_t heap = 0;
  for (auto _ : state) {
    const std::size_t before = mallinfo2().uordblks;
    const norva::TIRDB database(TemporaryPath("none.xml"), true);
    heap = mallinfo2().uordblks - before;
    streams = NativeStreamCount(database);
  }
  state.counters["native_streams"] = streams;
  state.counters["heap_bytes_per_native_stream"] = static_cast<double>(heap) / streams;
  norva::EnableUndo();
}
BENCHMARK(BuildPublicDatabase)->Unit(benchmark::kMillisecond);

// A public database with 10,000 user IR commands: the corpus codes over and over in 40 models.
struct TNamingFixture {
  TNamingFixture() : database(TemporaryPath("naming.xml"), false) {
    norva::DisableUndo();
    for (const auto& [name, code] : norva::bench::InfraRedCorpus()) codes << code;
    norva::TMake* make = database.AddNewMake();
    make->SetName(QStringLiteral("Acme"));
    for (int i = 0; i < 10000; ++i) {
      if (i % 250 == 0) make->AddNewModel()->SetName(QStringLiteral("Model %1").arg(i / 250));
      auto* stream = static_cast<norva::TIRStream*>(
          make->GetModel(i / 250)->AddNewCommandObject(&norva::TIRStream::staticMetaObject));
      stream->SetName(QStringLiteral("Code %1").arg(i));
      stream->SetHexCode(codes[i % codes.size()]);
      // Vary the carrier so that most codes are distinct.
      stream->SetModulationPeriod(static_cast<quint16>(100 + i % 60000));
    }
    database.Save();
    publicDatabase = std::make_unique<norva::TIRDB>(TemporaryPath("naming.xml"), true);
    norva::TNorvaIRStream native;
    for (const QString& code : codes) {
      queries.push_back(std::make_unique<norva::TIRStream>());
      queries.back()->SetHexCode(code);
    }
    native.SetNorva(40, norva::nvVolDownCmd, norva::AmpCommand);
    queries.push_back(std::make_unique<norva::TIRStream>());
    queries.back()->SetData(native.Data());  // found among the native codes, after every user code
  }
  norva::TIRDB database;
  std::unique_ptr<norva::TIRDB> publicDatabase;
  QStringList codes;
  std::vector<std::unique_ptr<norva::TIRStream>> queries;
};

TNamingFixture& Naming() {
  static TNamingFixture fixture;
  return fixture;
}

void GetNamesIndexed(benchmark::State& state) {
  TNamingFixture& fixture = Naming();
  int named = 0;
  for (auto _ : state)
    for (const auto& query : fixture.queries)
      named += fixture.publicDatabase->GetNames(*query) ? 1 : 0;
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(fixture.queries.size()));
  state.counters["named_per_pass"] =
      static_cast<double>(named) / static_cast<double>(state.iterations());
}
BENCHMARK(GetNamesIndexed)->Unit(benchmark::kMicrosecond);

void GetNamesByWalking(benchmark::State& state) {
  TNamingFixture& fixture = Naming();
  int named = 0;
  for (auto _ : state)
    for (const auto& query : fixture.queries)
      named += fixture.publicDatabase->GetNamesByWalking(*query) ? 1 : 0;
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(fixture.queries.size()));
  state.counters["named_per_pass"] =
      static_cast<double>(named) / static_cast<double>(state.iterations());
}
BENCHMARK(GetNamesByWalking)->Unit(benchmark::kMillisecond)->Iterations(1);

// 100,000 serial and network commands in 100 models.
struct TFileFixture {
  TFileFixture() {
    norva::DisableUndo();
    norva::TIRDB database(TemporaryPath("large.xml"), false);
    norva::TMake* make = database.AddNewMake();
    make->SetName(QStringLiteral("Acme"));
    for (int i = 0; i < 100000; ++i) {
      if (i % 1000 == 0) make->AddNewModel()->SetName(QStringLiteral("Model %1").arg(i / 1000));
      norva::TModel* model = make->GetModel(i / 1000);
      if (i % 2 == 0) {
        auto* serial = static_cast<norva::TRS232Command*>(
            model->AddNewCommandObject(&norva::TRS232Command::staticMetaObject));
        serial->SetName(QStringLiteral("Lamp %1").arg(i));
        serial->SetDataString(QStringLiteral("2A4C%1").arg(i % 256, 2, 16, QLatin1Char('0')));
      } else {
        auto* network = static_cast<norva::TIPCommand*>(
            model->AddNewCommandObject(&norva::TIPCommand::staticMetaObject));
        network->SetName(QStringLiteral("Input %1").arg(i));
        network->SetPort(4352);
        network->SetDataString(QStringLiteral("2531%1").arg(i % 256, 2, 16, QLatin1Char('0')));
      }
    }
    database.Save();
    QFile file(TemporaryPath("large.xml"));
    file.open(QIODevice::ReadOnly);
    bytes = file.readAll();
  }
  QByteArray bytes;
};

TFileFixture& Files() {
  static TFileFixture fixture;
  return fixture;
}

void LoadDatabase(benchmark::State& state) {
  Files();
  for (auto _ : state) {
    const norva::TIRDB database(TemporaryPath("large.xml"), false);
    benchmark::DoNotOptimize(database.GetMakeCount());
  }
  state.SetBytesProcessed(state.iterations() * Files().bytes.size());
}
BENCHMARK(LoadDatabase)->Unit(benchmark::kMillisecond);

void SaveDatabase(benchmark::State& state) {
  Files();
  norva::TIRDB database(TemporaryPath("large.xml"), false);
  for (auto _ : state) database.Save();
  state.SetBytesProcessed(state.iterations() * Files().bytes.size());
}
BENCHMARK(SaveDatabase)->Unit(benchmark::kMillisecond);

// The raw costs beside them: pugixml merely parsing the same file, and merely writing it.
void ParseWithPugixmlOnly(benchmark::State& state) {
  const QByteArray& bytes = Files().bytes;
  for (auto _ : state) {
    pugi::xml_document document;
    benchmark::DoNotOptimize(norva::bench::ParseWithPugixml(document, bytes));
  }
  state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(ParseWithPugixmlOnly)->Unit(benchmark::kMillisecond);

void WriteWithPugixmlOnly(benchmark::State& state) {
  const QByteArray& bytes = Files().bytes;
  pugi::xml_document document;
  norva::bench::ParseWithPugixml(document, bytes);
  const auto expected = static_cast<std::size_t>(bytes.size());
  for (auto _ : state) benchmark::DoNotOptimize(norva::bench::WriteWithPugixml(document, expected));
  state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(WriteWithPugixmlOnly)->Unit(benchmark::kMillisecond);

}  // namespace
