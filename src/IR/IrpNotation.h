#pragma once
// The compiled form of a protocol definition in the IRP notation (docs/ir-protocols.md): carrier
// and time unit, bit codings, the durations and bit fields of the streams, expressions, definitions
// and parameter lists. Parsed once per protocol, then walked by the renderer and the recogniser.

#include <QString>

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace norva {

enum class TIrpOp : std::uint8_t {
  Number,
  Variable,
  BitField,
  Negate,
  Complement,
  Not,
  BitCount,
  Multiply,
  Divide,
  Modulo,
  Add,
  Subtract,
  ShiftLeft,
  ShiftRight,
  And,
  Xor,
  Or
};

// One node of an expression; operands are indexes into TIrpProtocol::Exprs. A bit field takes
// `Left` (the value), `Right` (the width, negative for the bits in reverse order) and `Offset`.
struct TIrpExpr {
  TIrpOp Op = TIrpOp::Number;
  std::int64_t Number = 0;
  int Variable = -1;
  int Left = -1;
  int Right = -1;
  int Offset = -1;
  bool Complemented = false;
};

enum class TIrpVariableKind : std::uint8_t { Parameter, Definition, Assigned };

struct TIrpVariable {
  QString Name;
  TIrpVariableKind Kind = TIrpVariableKind::Assigned;
  int Expr = -1;  // a definition's expression
  std::int64_t Min = 0;
  std::int64_t Max = 0;
  int Default = -1;  // a parameter's default expression, -1 when it has none
};

enum class TIrpItemKind : std::uint8_t {
  Flash,
  Gap,
  Extent,
  BitField,
  Stream,
  Assignment,
  Variation
};

// The parts of a press a variation `[..][..][..]` chooses between.
enum class TIrpPart : std::uint8_t { Intro, Repeat, Ending };

struct TIrpItem {
  TIrpItemKind Kind = TIrpItemKind::Flash;
  double Microseconds = 0;  // durations and extents
  int Expr = -1;            // a bit field's expression; an assignment's value
  int Stream = -1;          // a nested stream
  int Variable = -1;        // an assignment's target
  // A variation's alternatives for the intro, the repeat and the ending: streams, -1 for none.
  std::array<int, 3> Alternatives{-1, -1, -1};
};

// A bit coding has at most this many codes (four bits a symbol).
inline constexpr std::size_t MaxIrpSymbolCodes = 16;

// The durations of each symbol, in microseconds, negative for gaps; a coding of 2^n codes sends
// n bits per symbol.
struct TIrpBitCoding {
  std::vector<std::vector<double>> Codes;
  int BitsPerSymbol = 1;
};

// A parenthesised stream: items, the bit coding in force (-1: the enclosing one), and its repeat
// marker: sent MinRepeats times, then again while the key is held when RepeatsForever.
struct TIrpStream {
  std::vector<TIrpItem> Items;
  int BitCoding = -1;
  int MinRepeats = 1;
  bool RepeatsForever = false;
};

struct TIrpProtocol {
  double FrequencyHz = 38000;
  double UnitMicroseconds = 1;
  bool MsbFirst = false;
  std::vector<TIrpExpr> Exprs;
  std::vector<TIrpVariable> Variables;
  std::vector<TIrpBitCoding> BitCodings;
  std::vector<TIrpStream> Streams;
  int Top = -1;  // the outermost stream
  // The stream repeated while the key is held (the outermost, or one of its items), -1 for a
  // code sent as it is.
  int Repeated = -1;

  int FindVariable(QStringView name) const;
};

// Compiles a definition. Raises ENorvaError naming the position of the first thing it cannot read.
TIrpProtocol ParseIrp(std::string_view text);

}  // namespace norva
