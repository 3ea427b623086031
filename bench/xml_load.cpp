// Loading and saving a large document of the form the helpers build: an IR database of 200 makes,
// each with 25 models of 20 commands (100,000 commands, about 13 MB), in UTF-8 as saved and in
// Latin-1 under a declaration that says so.
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlDocument.h>

#include <benchmark/benchmark.h>

namespace norva {
namespace {

constexpr int Makes = 200;
constexpr int ModelsPerMake = 25;
constexpr int CommandsPerModel = 20;

void AddValue(pugi::xml_node parent, const QString& name, const QString& value) {
  SetXMLDOMText(AddXMLDOMElement(parent, name), value);
}

void AddModel(pugi::xml_node make, int number) {
  pugi::xml_node model = AddXMLDOMElement(make, QStringLiteral("model"));
  AddValue(model, QStringLiteral("name"), QStringLiteral("Récepteur %1 & co").arg(number));
  for (int i = 0; i < CommandsPerModel; ++i) {
    pugi::xml_node command = AddXMLDOMElement(model, QStringLiteral("command"));
    AddValue(command, QStringLiteral("name"), QStringLiteral("Volume <%1>").arg(i));
    AddValue(command, QStringLiteral("stream"),
             QStringLiteral("0000 006D 0022 0002 0157 00AC 0015 0016 0015 %1").arg(i, 4, 16));
  }
}

QByteArray LargeDocument(const char* declaration) {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("ir_database");
  for (int make = 0; make < Makes; ++make) {
    pugi::xml_node element = AddXMLDOMElement(root, QStringLiteral("make"));
    AddValue(element, QStringLiteral("name"), QStringLiteral("Maker %1").arg(make));
    for (int model = 0; model < ModelsPerMake; ++model) AddModel(element, model);
  }
  return declaration + SaveXMLDocument(document);
}

void MeasureLoad(benchmark::State& state, const QByteArray& bytes) {
  for (auto _ : state) {
    pugi::xml_document document;
    LoadXMLDocument(document, bytes);
    benchmark::DoNotOptimize(document.first_child());
  }
  state.SetBytesProcessed(state.iterations() * bytes.size());
}

void BM_LoadUtf8Document(benchmark::State& state) {
  MeasureLoad(state, LargeDocument("<?xml version=\"1.0\"?>\r\n"));
}
BENCHMARK(BM_LoadUtf8Document)->Unit(benchmark::kMillisecond);

void BM_LoadLatin1Document(benchmark::State& state) {
  const QString text =
      QString::fromUtf8(LargeDocument("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"));
  MeasureLoad(state, text.toLatin1());
}
BENCHMARK(BM_LoadLatin1Document)->Unit(benchmark::kMillisecond);

void BM_SaveDocument(benchmark::State& state) {
  const QByteArray bytes = LargeDocument("<?xml version=\"1.0\"?>\r\n");
  pugi::xml_document document;
  LoadXMLDocument(document, bytes);
  for (auto _ : state) benchmark::DoNotOptimize(SaveXMLDocument(document));
  state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(BM_SaveDocument)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace norva
