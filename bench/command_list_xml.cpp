// Command lists in files: saving and reading 100,000 serial and network commands, each beside
// pugixml merely writing and parsing the same document (the raw cost the library builds on), and
// heap bytes per command object.
#include <IR/IR.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <support/PugixmlBaseline.h>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstring>

namespace {

constexpr int Count = 100000;

void Fill(norva::TCommandObjectList& list) {
  for (int i = 0; i < Count; ++i) {
    if (i % 2 == 0) {
      auto* serial = static_cast<norva::TRS232Command*>(
          list.AddNewCommandObject(&norva::TRS232Command::staticMetaObject));
      serial->SetName(QStringLiteral("Lamp %1").arg(i));
      serial->SetDataString(QStringLiteral("2A4C%1").arg(i % 256, 2, 16, QLatin1Char('0')));
      serial->SetBaudRate(19200);
      serial->AddButtonClass(norva::TButtonClass(norva::SystemClassGroup, 1));
    } else {
      auto* network = static_cast<norva::TIPCommand*>(
          list.AddNewCommandObject(&norva::TIPCommand::staticMetaObject));
      network->SetName(QStringLiteral("Input %1").arg(i));
      network->SetPort(4352);
      network->SetDataString(QStringLiteral("2531%1").arg(i % 256, 2, 16, QLatin1Char('0')));
    }
    list.GetCommand(i)->UpdateGUID();
  }
}

QByteArray Saved(const norva::TCommandObjectList& list) {
  pugi::xml_document document;
  list.Save(document.append_child("commands"), true);
  return norva::SaveXMLDocument(document);
}

struct TFixture {
  TFixture() {
    norva::RegisterCommandClasses();
    norva::DisableUndo();
    Fill(list);
    bytes = Saved(list);
  }
  norva::TCommandObjectList list;
  QByteArray bytes;
};

TFixture& Fixture() {
  static TFixture fixture;
  return fixture;
}

void Report(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * Fixture().bytes.size());
  state.counters["commands"] = Count;
}

void SaveCommandList(benchmark::State& state) {
  const TFixture& fixture = Fixture();  // built before the clock runs
  for (auto _ : state) benchmark::DoNotOptimize(Saved(fixture.list).size());
  Report(state);
}
BENCHMARK(SaveCommandList)->Unit(benchmark::kMillisecond);

// The same document, already built, merely written by pugixml.
void WriteWithPugixmlOnly(benchmark::State& state) {
  pugi::xml_document document;
  norva::bench::ParseWithPugixml(document, Fixture().bytes);
  const auto expected = static_cast<std::size_t>(Fixture().bytes.size());
  for (auto _ : state) benchmark::DoNotOptimize(norva::bench::WriteWithPugixml(document, expected));
  Report(state);
}
BENCHMARK(WriteWithPugixmlOnly)->Unit(benchmark::kMillisecond);

void LoadCommandList(const TFixture& fixture) {
  pugi::xml_document document;
  norva::LoadXMLDocument(document, fixture.bytes);
  norva::TCommandObjectList list;
  list.Load(document.document_element(), true);
  benchmark::DoNotOptimize(list.GetCommandCount());
}

void LoadCommandList(benchmark::State& state) {
  const TFixture& fixture = Fixture();
  for (auto _ : state) LoadCommandList(fixture);
  Report(state);
}
BENCHMARK(LoadCommandList)->Unit(benchmark::kMillisecond);

// As an editor reads a list: with undo on, the read is one undoable change of the list.
void LoadCommandListUndoOn(benchmark::State& state) {
  const TFixture& fixture = Fixture();
  norva::EnableUndo();
  for (auto _ : state) {
    LoadCommandList(fixture);
    norva::MaintainUndo();
  }
  norva::DisableUndo();
  Report(state);
}
BENCHMARK(LoadCommandListUndoOn)->Unit(benchmark::kMillisecond);

// The library's strict document reading alone, without the commands.
void LoadDocumentOnly(benchmark::State& state) {
  const TFixture& fixture = Fixture();
  for (auto _ : state) {
    pugi::xml_document document;
    norva::LoadXMLDocument(document, fixture.bytes);
  }
  Report(state);
}
BENCHMARK(LoadDocumentOnly)->Unit(benchmark::kMillisecond);

void ParseWithPugixmlOnly(benchmark::State& state) {
  for (auto _ : state) {
    pugi::xml_document document;
    benchmark::DoNotOptimize(norva::bench::ParseWithPugixml(document, Fixture().bytes));
  }
  Report(state);
}
BENCHMARK(ParseWithPugixmlOnly)->Unit(benchmark::kMillisecond);

// Floors under the library's own figures, for the comparison above: merely visiting every name
// and value of the parsed document, as any reader of it must ...
void VisitDocumentOnly(benchmark::State& state) {
  pugi::xml_document document;
  norva::bench::ParseWithPugixml(document, Fixture().bytes);
  for (auto _ : state) {
    std::size_t length = 0;
    for (const pugi::xml_node command : document.document_element().children()) {
      for (const pugi::xml_attribute attribute : command.attributes())
        length += std::strlen(attribute.value());
      for (const pugi::xml_node child : command.children())
        length += std::strlen(child.name()) + std::strlen(child.first_child().value());
    }
    benchmark::DoNotOptimize(length);
  }
  Report(state);
}
BENCHMARK(VisitDocumentOnly)->Unit(benchmark::kMillisecond);

// ... and pugixml building the same document from another, as any writer through it must.
void CopyDocumentOnly(benchmark::State& state) {
  pugi::xml_document parsed;
  norva::bench::ParseWithPugixml(parsed, Fixture().bytes);
  for (auto _ : state) {
    pugi::xml_document copy;
    copy.reset(parsed);
    benchmark::DoNotOptimize(copy.first_child());
  }
  Report(state);
}
BENCHMARK(CopyDocumentOnly)->Unit(benchmark::kMillisecond);

// Heap in use per command, allocator overhead and Qt's private object data included.
void BytesPerCommandObject(benchmark::State& state) {
  norva::RegisterCommandClasses();
  norva::DisableUndo();
  for (auto _ : state) {
    const std::size_t before = mallinfo2().uordblks;
    norva::TCommandObjectList list;
    Fill(list);
    state.counters["heap_bytes_each"] = static_cast<double>(mallinfo2().uordblks - before) / Count;
  }
  state.counters["sizeof_TRS232Command"] = sizeof(norva::TRS232Command);
  state.counters["sizeof_TIRStream"] = sizeof(norva::TIRStream);
}
BENCHMARK(BytesPerCommandObject)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
