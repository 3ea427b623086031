// The button-class finder over real remote controls' names, and the wildcard matcher on a long
// name against a pattern of many stars (at most 10 ms a call, however the stars fall).
#include <ButtonClasses/ButtonPatterns.h>
#include <Utils/PatternMatch.h>
#include <support/Corpus.h>

#include <benchmark/benchmark.h>

namespace {

void FindButtonClassOverTheCorpus(benchmark::State& state) {
  QStringList names;
  for (const auto& [name, code] : norva::bench::InfraRedCorpus()) names << name;
  int found = 0;
  for (auto _ : state) {
    for (const QString& name : names) {
      norva::TButtonClass result;
      found += norva::FindButtonClass(name, result) ? 1 : 0;
    }
  }
  benchmark::DoNotOptimize(found);
  state.SetItemsProcessed(state.iterations() * names.size());
  state.counters["names"] = static_cast<double>(names.size());
}
BENCHMARK(FindButtonClassOverTheCorpus);

// A 10,000-character name against 50 stars: 0 "a*a*...a*b" on "aa...a" (fails at the very end),
// 1 the same ending in "a" (matches), 2 "*a*a...*a", 3 fifty stars then "b", 4 "*b*b...*b*" on
// fifty b then a (one star searches the whole name), 5 stars between runs of 48 a that never meet
// the c they need, on runs of 48 a split by b (each start walks 48 characters).
void ManyStarsOnALongName(benchmark::State& state) {
  const int shape = static_cast<int>(state.range(0));
  QString name(10000, u'a');
  QString pattern;
  for (int i = 0; i < 50; ++i) {
    switch (shape) {
      case 0:
      case 1: pattern += QStringLiteral("a*"); break;
      case 2: pattern += QStringLiteral("*a"); break;
      case 3: pattern += u'*'; break;
      case 4: pattern += QStringLiteral("*b"); break;
      default: pattern += u'*' + QString(48, u'a') + u'c'; break;
    }
  }
  if (shape == 0 || shape == 3) pattern += u'b';
  if (shape == 1) pattern += u'a';
  if (shape == 4) {
    name.replace(0, 50, QString(50, u'b'));
    pattern += u'*';
  }
  if (shape == 5) {
    for (qsizetype i = 48; i < name.size(); i += 49) name[i] = u'b';
    pattern += QStringLiteral("*z");
    name.back() = u'z';
  }
  bool matched = false;
  for (auto _ : state) matched = norva::PatternMatch(name, pattern, true);
  state.counters["matched"] = matched ? 1 : 0;
}
BENCHMARK(ManyStarsOnALongName)->DenseRange(0, 5)->Unit(benchmark::kMicrosecond);

}  // namespace
