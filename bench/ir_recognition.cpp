// Recognising the same button: a received code in a public database plus 100,000 user commands
// (codes rendered from protocol parameters, and captures of the real codes with every duration
// jittered), target at most 10 us median a query, decoding included; how often a re-learnt real
// code (every duration jittered by up to 3 %) finds its own name among the 320 of the corpus, and
// how many wrong names it is given (target none); codes written as hex and read back, and the
// native codes' own hex codes, recognised.
#include <IR/IR.h>
#include <IR/IRProtocols.h>
#include <IR_Database/IR_Database.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <support/Corpus.h>

#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>

namespace {

constexpr double Jitter = 0.03;
constexpr int UserCommands = 100000;
constexpr int CapturesPerRealCode = 10;

QString TemporaryPath(const char* name) {
  static const QTemporaryDir folder;
  return folder.filePath(QLatin1String(name));
}

// The hex code with every duration moved by up to `share` either way, as a new capture of the
// button would give it (rounded to whole carrier periods, as a hex code counts them).
QString JitteredHexCode(const QString& code, double share, QRandomGenerator& random) {
  QStringList words = code.split(u' ');
  for (qsizetype i = 4; i < words.size(); ++i) {
    const double duration = words[i].toUInt(nullptr, 16);
    const double moved = duration * (1 + share * (2 * random.generateDouble() - 1));
    words[i] = QStringLiteral("%1").arg(std::max(1, qRound(moved)), 4, 16, QLatin1Char('0'));
  }
  return words.join(u' ').toUpper();
}

std::optional<norva::TIRStreamData> Read(const QString& code) {
  try {
    return norva::ParseHexCode(code);
  } catch (const norva::ENorvaError&) {
    return std::nullopt;  // a capture jittered into more lengths than a stream holds
  }
}

// A protocol's stream for a varied choice of parameters, or none when they do not fit it.
std::optional<norva::TIRStreamData> Rendered(const QString& protocol, int variant) {
  norva::TIRProtocolParameters parameters{variant % 32, std::nullopt, (variant / 32) % 64,
                                          std::nullopt};
  for (int attempt = 0; attempt < 2; ++attempt) {
    try {
      return norva::EncodeIRStream(protocol, parameters);
    } catch (const norva::ENorvaError&) {
      parameters.S = variant % 16;  // some protocols need a sub-device
    }
  }
  return std::nullopt;
}

void AddCommand(norva::TModel& model, const QString& name, const norva::TIRStreamData& data) {
  auto* stream = static_cast<norva::TIRStream*>(
      model.AddNewCommandObject(&norva::TIRStream::staticMetaObject));
  stream->SetName(name);
  stream->SetData(data);
}

// A public database whose file holds 100,000 IR commands in 100 models: captures of every real
// code, the rest rendered from protocol parameters; and the queries: other captures of the real
// codes, some rendered codes, and native codes.
struct TSpeedFixture {
  TSpeedFixture() {
    const norva::TUndoSuspended undoOff;
    QRandomGenerator random(2024);
    const auto corpus = norva::bench::InfraRedCorpus();
    {
      norva::TIRDB file(TemporaryPath("recognition.xml"), false);
      norva::TMake* make = file.AddNewMake();
      make->SetName(QStringLiteral("Acme"));
      for (int model = 0; model < 100; ++model)
        make->AddNewModel()->SetName(QStringLiteral("Model %1").arg(model));
      int added = 0;
      for (int capture = 0; capture < CapturesPerRealCode; ++capture) {
        for (const auto& [name, code] : corpus) {
          if (const auto data = Read(JitteredHexCode(code, Jitter, random)))
            AddCommand(*make->GetModel(added++ % 100), name, *data);
        }
      }
      const QStringList protocols = norva::IRProtocolNames();
      for (int variant = 0; !protocols.isEmpty() && added < UserCommands; ++variant) {
        const QString& protocol = protocols[variant % protocols.size()];
        if (const auto data = Rendered(protocol, variant / protocols.size())) {
          AddCommand(*make->GetModel(added++ % 100), protocol + QString::number(variant), *data);
          if (variant % 500 == 0) queries.push_back(*data);
        }
      }
      commands = added;
      file.Save();
    }
    database = std::make_unique<norva::TIRDB>(TemporaryPath("recognition.xml"), true);
    for (const auto& [name, code] : corpus) {
      if (const auto data = Read(JitteredHexCode(code, Jitter, random))) queries.push_back(*data);
    }
    int native = 0;
    norva::ForEachNativeCode([&](const norva::TNorvaIRStream& code) {
      if (native++ % 1000 == 0) queries.push_back(code.Data());
      return false;
    });
  }
  std::unique_ptr<norva::TIRDB> database;
  std::vector<norva::TIRStreamData> queries;
  int commands = 0;
};

TSpeedFixture& Speed() {
  static TSpeedFixture fixture;
  return fixture;
}

// The index is built by the first query after a change: decoding every command of the database.
void BuildRecognitionIndex(benchmark::State& state) {
  TSpeedFixture& fixture = Speed();
  for (auto _ : state) {
    fixture.database->Updated();
    benchmark::DoNotOptimize(fixture.database->RecogniseNames(fixture.queries.front()));
  }
  state.counters["user_commands"] = fixture.commands;
}
BENCHMARK(BuildRecognitionIndex)->Unit(benchmark::kMillisecond)->Iterations(1);

double Percentile(std::vector<double> values, double share) {
  const auto at = static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), values.begin() + at, values.end());
  return values[static_cast<std::size_t>(at)];
}

// Each query timed on its own: the median, not the mean, is the figure.
void RecogniseNames(benchmark::State& state) {
  TSpeedFixture& fixture = Speed();
  fixture.database->RecogniseNames(fixture.queries.front());  // both indexes built
  std::vector<double> microseconds;
  std::int64_t recognised = 0;
  for (auto _ : state) {
    for (const norva::TIRStreamData& query : fixture.queries) {
      const auto start = std::chrono::steady_clock::now();
      const QList<norva::TStreamName> names = fixture.database->RecogniseNames(query);
      const auto end = std::chrono::steady_clock::now();
      microseconds.push_back(std::chrono::duration<double, std::micro>(end - start).count());
      recognised += names.isEmpty() ? 0 : 1;
    }
  }
  const auto queries = static_cast<std::int64_t>(microseconds.size());
  state.SetItemsProcessed(queries);
  state.counters["queries"] = static_cast<double>(fixture.queries.size());
  state.counters["recognised_share"] =
      static_cast<double>(recognised) / static_cast<double>(queries);
  state.counters["median_us"] = Percentile(microseconds, 0.5);
  state.counters["p90_us"] = Percentile(microseconds, 0.9);
}
BENCHMARK(RecogniseNames)->Unit(benchmark::kMicrosecond);

// The corpus in a public database, each code in a model of its own line ("Line 12") under the
// name the file gives it, so that a name found is known to be the code's own or another's.
struct TCorpusFixture {
  TCorpusFixture() {
    const norva::TUndoSuspended undoOff;
    norva::TIRDB file(TemporaryPath("corpus.xml"), false);
    int line = 0;
    for (const auto& [name, code] : norva::bench::InfraRedCorpus()) {
      const norva::TIRStreamData data = *Read(code);
      AddCommand(
          *file.GetOrAddModel(QStringLiteral("Corpus"), QStringLiteral("Line %1").arg(++line)),
          name, data);
      codes << code;
      prints.push_back(norva::ButtonPrintOf(data));
    }
    file.Save();
    database = std::make_unique<norva::TIRDB>(TemporaryPath("corpus.xml"), true);
  }
  // The line a recognised name stands for; 0 for a native code.
  static int LineOf(const norva::TStreamName& name) {
    return name.Category.startsWith(QStringLiteral("Corpus - Line "))
               ? name.Category.mid(14).toInt()
               : 0;
  }
  std::unique_ptr<norva::TIRDB> database;
  QStringList codes;
  std::vector<norva::TButtonPrint> prints;
};

TCorpusFixture& Corpus() {
  static TCorpusFixture fixture;
  return fixture;
}

// Every real code captured again with each duration jittered by up to 3 % (seeded): the share that
// finds its own name, names of other lines whose code is the same button by the same rule (two
// codes of the corpus may be one button: the same protocol and parameters), and wrong names.
void RelearntCodesFindTheirOwnNames(benchmark::State& state) {
  const norva::TUndoSuspended undoOff;
  QRandomGenerator random(1123);
  struct {
    std::int64_t Captures = 0, Unreadable = 0, Own = 0, SameButton = 0, Wrong = 0;
  } count;
  for (auto _ : state) {
    const TCorpusFixture& corpus = Corpus();
    for (qsizetype i = 0; i < corpus.codes.size(); ++i) {
      ++count.Captures;
      const auto capture = Read(JitteredHexCode(corpus.codes[i], Jitter, random));
      if (!capture) {
        ++count.Unreadable;
        continue;
      }
      const int line = static_cast<int>(i) + 1;
      for (const norva::TStreamName& name : corpus.database->RecogniseNames(*capture)) {
        const int found = TCorpusFixture::LineOf(name);
        if (found == line)
          ++count.Own;
        else if (found > 0 && norva::SameButton(corpus.prints[static_cast<std::size_t>(found - 1)],
                                                corpus.prints[i]))
          ++count.SameButton;
        else
          ++count.Wrong;
      }
    }
  }
  const auto per = [&count](std::int64_t n) {
    return static_cast<double>(n) / static_cast<double>(count.Captures);
  };
  state.counters["captures"] = static_cast<double>(count.Captures);
  state.counters["own_name_share"] = per(count.Own);
  state.counters["unreadable_share"] = per(count.Unreadable);
  state.counters["same_button_names"] = static_cast<double>(count.SameButton);
  state.counters["wrong_names"] = static_cast<double>(count.Wrong);
}
BENCHMARK(RelearntCodesFindTheirOwnNames)->Unit(benchmark::kMillisecond)->Iterations(1);

// Every real code written as hex and read back, and every native code's own hex code read as a
// received code: the share recognised under its own name.
void HexCodesReadBackAreRecognised(benchmark::State& state) {
  std::int64_t realFound = 0;
  std::int64_t real = 0;
  std::int64_t nativeFound = 0;
  std::int64_t natives = 0;
  for (auto _ : state) {
    const TCorpusFixture& corpus = Corpus();
    for (qsizetype i = 0; i < corpus.codes.size(); ++i) {
      const norva::TIRStreamData data = *Read(corpus.codes[i]);
      if (data.ModulationPeriod == 0) continue;  // an unmodulated code has no hex code to write
      ++real;
      for (const norva::TStreamName& name :
           corpus.database->RecogniseNames(*Read(norva::HexCodeOf(data))))
        realFound += TCorpusFixture::LineOf(name) == i + 1 ? 1 : 0;
    }
    norva::ForEachNativeCode([&](const norva::TNorvaIRStream& native) {
      ++natives;
      const QList<norva::TStreamName> names =
          corpus.database->RecogniseNames(*Read(native.GetHexCode()));
      nativeFound += std::any_of(names.begin(), names.end(), [&](const norva::TStreamName& name) {
        return name.Name == native.GetName() && name.Category == native.GetCategory();
      });
      return false;
    });
  }
  state.counters["real_codes"] = static_cast<double>(real);
  state.counters["real_recognised_share"] =
      static_cast<double>(realFound) / static_cast<double>(real);
  state.counters["native_codes"] = static_cast<double>(natives);
  state.counters["native_recognised_share"] =
      static_cast<double>(nativeFound) / static_cast<double>(natives);
}
BENCHMARK(HexCodesReadBackAreRecognised)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
