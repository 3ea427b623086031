// The notation's constructs, each rendered from a small definition and recognised back: bit codings
// of four codes, reversed, complemented and offset fields, definitions, bit counts, variations;
// and the failures that name what a definition got wrong.

#include "FailureOf.h"

#include <IR/IrpEngine.h>
#include <support/QtPrinters.h>

#include <gtest/gtest.h>

#include <vector>

using namespace norva;

namespace {

struct TCase {
  const char* Definition;
  std::int64_t F;
  std::vector<double> Once;
  std::vector<double> Repeat;
};

std::int64_t RecognisedF(const TIrpProtocol& protocol, const std::vector<double>& durations) {
  TIrpScratch scratch;
  scratch.Elapsed.assign(1, 0);
  for (const double duration : durations)
    scratch.Elapsed.push_back(scratch.Elapsed.back() + duration);
  TIrpRecognition result;
  if (!RecogniseIrp(protocol, durations, scratch, result)) return -1;
  return result.Values[static_cast<std::size_t>(protocol.FindVariable(u"F"))];
}

TEST(IrpNotation, ConstructsRenderAndAreRecognised) {
  const TCase cases[] = {
      // F=6: two bits per symbol, least significant first: 2, then 1.
      {"{38k,100}<1,-1|1,-2|1,-3|1,-4>(F:4,1,-50m)*[F:0..15]",
       6,
       {},
       {100, 300, 100, 200, 100, 50000}},
      // A=F+1=6 reversed in 3 bits (011, sent 1,1,0); F's bits 1..2 complemented (01); F's bit 0;
      // F^1 (00).
      {"{38k,100}<1,-1|1,-2>(A:-3,~F:2:1,F:1,(F^1):2,1,-1m)*{A=F+1}[F:0..7]",
       5,
       {},
       {100, 200, 100, 200, 100, 100, 100, 200, 100, 100, 100, 200, 100, 100, 100, 100, 100, 1000}},
      // A variation: P is 0 in the first frame, 1 in the repeats; C counts F's bits. Bi-phase
      // halves merge across symbols; most significant bit first.
      {"{38k,msb,100}<1,-1|-1,1>(([P=0][P=1],2,P:1,F:3,C:2,^3m)+){C=#F}[F:0..7]",
       7,
       {300, 200, 100, 100, 100, 100, 100, 100, 100, 100, 100, 1600},
       {200, 100, 100, 100, 100, 100, 100, 100, 100, 100, 100, 100, 100, 1600}},
      // The extent ends the frame 2 ms after it started, whatever its bits.
      {"{0k,100}<1,-1|1,-3>(F:2,^2m)*[F:0..3]", 2, {}, {100, 100, 100, 1700}},
  };
  for (const TCase& c : cases) {
    SCOPED_TRACE(c.Definition);
    const TIrpProtocol protocol = ParseIrp(c.Definition);
    TIrpValues values{};
    values[static_cast<std::size_t>(protocol.FindVariable(u"F"))] = c.F;
    const TIrpRendering rendering = RenderIrp(protocol, values);
    EXPECT_EQ(rendering.Once, c.Once);
    EXPECT_EQ(rendering.Repeat, c.Repeat);
    std::vector<double> held = c.Once;
    held.insert(held.end(), c.Repeat.begin(), c.Repeat.end());
    held.insert(held.end(), c.Repeat.begin(), c.Repeat.end());
    EXPECT_EQ(RecognisedF(protocol, held), c.F);
  }
}

TEST(IrpNotation, FailuresNameWhatIsWrong) {
  const std::pair<const char*, const char*> cases[] = {
      {"{38k,100}<1,-1|1,-2|1,-3>(F:1)[F:0..1]",
       "Protocol definition: a bit coding of 2, 4, 8 or 16 codes expected at position 26 of"},
      {"{38k,100}<1,-1|1,-2>(F:1,X:1)[F:0..1]", "Protocol definition: X is not declared in"},
      {"{38k,100}<1,-1|1,-2>(F:1,1[F:0..1]", "Protocol definition: ')' expected at position 27"},
      {"{38k,100}<1,-1|1,-2>(F:1)[F:0..1][F:0..1]",
       "Protocol definition: a name declared twice at position 41"},
  };
  for (const auto& [definition, message] : cases) {
    const QString failure = FailureOf([&] { ParseIrp(definition); });
    EXPECT_TRUE(failure.startsWith(QLatin1String(message))) << failure.toStdString();
  }
}

}  // namespace
