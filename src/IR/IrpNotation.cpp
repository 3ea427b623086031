#include <IR/IrpNotation.h>

#include <NorvaGlobal/Exceptions.h>

#include <array>
#include <bit>
#include <cctype>
#include <cstdlib>
#include <cstring>

namespace norva {

int TIrpProtocol::FindVariable(QStringView name) const {
  for (std::size_t i = 0; i < Variables.size(); ++i)
    if (Variables[i].Name == name) return static_cast<int>(i);
  return -1;
}

namespace {

struct TBinaryOperator {
  const char* Token = nullptr;
  TIrpOp Op = TIrpOp::Or;
};
using TBinaryLevel = std::array<TBinaryOperator, 3>;

// Binary operators from the loosest to the tightest binding, as in C.
constexpr std::array<TBinaryLevel, 6> BinaryLevels = {{
    {{{"|", TIrpOp::Or}}},
    {{{"^", TIrpOp::Xor}}},
    {{{"&", TIrpOp::And}}},
    {{{"<<", TIrpOp::ShiftLeft}, {">>", TIrpOp::ShiftRight}}},
    {{{"+", TIrpOp::Add}, {"-", TIrpOp::Subtract}}},
    {{{"*", TIrpOp::Multiply}, {"/", TIrpOp::Divide}, {"%", TIrpOp::Modulo}}},
}};

// Recursive descent over the definition text; every rule consumes what it reads and raises on the
// first character that does not fit.
class TIrpParser {
 public:
  explicit TIrpParser(std::string_view text) : mText(text) {}

  TIrpProtocol Parse() {
    ReadGeneralPart();
    const int bitCoding = Peek() == '<' ? ReadBitCoding() : -1;
    mProtocol.Top = ReadStream(bitCoding);
    while (!AtEnd()) {
      if (Peek() == '{')
        ReadDefinitions();
      else if (Peek() == '[')
        ReadParameterList();
      else
        Fail(QStringLiteral("a definition or parameter list expected"));
    }
    CheckNames();
    FindRepeatedStream();
    return std::move(mProtocol);
  }

 private:
  [[noreturn]] void Fail(const QString& what) const {
    throw ENorvaError(QStringLiteral("Protocol definition: %1 at position %2 of \"%3\"")
                          .arg(what)
                          .arg(mPos + 1)
                          .arg(QLatin1String(mText.data(), static_cast<qsizetype>(mText.size()))));
  }

  bool AtEnd() {
    SkipSpace();
    return mPos >= mText.size();
  }
  void SkipSpace() {
    while (mPos < mText.size() && std::isspace(static_cast<unsigned char>(mText[mPos]))) ++mPos;
  }
  char Peek() {
    SkipSpace();
    return mPos < mText.size() ? mText[mPos] : '\0';
  }
  char PeekAt(std::size_t ahead) const {
    return mPos + ahead < mText.size() ? mText[mPos + ahead] : '\0';
  }
  bool Accept(char c) {
    if (Peek() != c) return false;
    ++mPos;
    return true;
  }
  void Expect(char c) {
    if (!Accept(c)) Fail(QStringLiteral("'%1' expected").arg(QLatin1Char(c)));
  }
  static bool IsNameStart(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) || c == '_';
  }
  static bool IsNameChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

  double ReadNumber() {
    SkipSpace();
    const char* begin = mText.data() + mPos;
    std::size_t length = 0;
    // "0..255" is a range: a point is a decimal point only before a digit.
    const auto isDigit = [&](std::size_t at) {
      return mPos + at < mText.size() && std::isdigit(static_cast<unsigned char>(begin[at]));
    };
    while (isDigit(length) || (isDigit(length + 1) && begin[length] == '.')) ++length;
    if (length == 0) Fail(QStringLiteral("a number expected"));
    const std::string digits(begin, length);
    mPos += length;
    return std::strtod(digits.c_str(), nullptr);
  }

  QString ReadName() {
    SkipSpace();
    if (!IsNameStart(PeekAt(0))) Fail(QStringLiteral("a name expected"));
    const std::size_t start = mPos;
    while (mPos < mText.size() && IsNameChar(mText[mPos])) ++mPos;
    return QString::fromLatin1(mText.data() + start, static_cast<qsizetype>(mPos - start));
  }

  // A duration in microseconds: in time units, or with the suffix u (microseconds), m
  // (milliseconds) or p (carrier periods).
  double ReadDuration() {
    const double value = ReadNumber();
    switch (PeekAt(0)) {
      case 'u': ++mPos; return value;
      case 'm': ++mPos; return value * 1000;
      case 'p': ++mPos; return value * 1e6 / mProtocol.FrequencyHz;
      default: return value * mProtocol.UnitMicroseconds;
    }
  }

  void ReadGeneralPart() {
    Expect('{');
    do {
      if (IsNameStart(Peek())) {
        const QString word = ReadName();
        if (word != u"msb" && word != u"lsb") Fail(QStringLiteral("msb or lsb expected"));
        mProtocol.MsbFirst = word == u"msb";
      } else {
        const double value = ReadNumber();
        if (PeekAt(0) == 'k') {
          ++mPos;
          mProtocol.FrequencyHz = value * 1000;
        } else if (PeekAt(0) == 'p') {
          ++mPos;
          mProtocol.UnitMicroseconds = value * 1e6 / mProtocol.FrequencyHz;
        } else {
          mProtocol.UnitMicroseconds = value;
        }
      }
    } while (Accept(','));
    Expect('}');
  }

  int ReadBitCoding() {
    Expect('<');
    TIrpBitCoding coding;
    do {
      std::vector<double> code;
      do {
        const bool gap = Accept('-');
        const double duration = ReadDuration();
        code.push_back(gap ? -duration : duration);
      } while (Accept(','));
      coding.Codes.push_back(std::move(code));
    } while (Accept('|'));
    Expect('>');
    const std::size_t count = coding.Codes.size();
    if (count < 2 || count > MaxIrpSymbolCodes || (count & (count - 1)) != 0)
      Fail(QStringLiteral("a bit coding of 2, 4, 8 or 16 codes expected"));
    coding.BitsPerSymbol = std::countr_zero(count);
    mProtocol.BitCodings.push_back(std::move(coding));
    return static_cast<int>(mProtocol.BitCodings.size()) - 1;
  }

  int ReadStream(int bitCoding) {
    Expect('(');
    TIrpStream stream;
    stream.BitCoding = bitCoding;
    if (Peek() != ')') {
      do stream.Items.push_back(ReadItem());
      while (Accept(','));
    }
    Expect(')');
    ReadRepeatMarker(stream);
    mProtocol.Streams.push_back(std::move(stream));
    return static_cast<int>(mProtocol.Streams.size()) - 1;
  }

  // One alternative of a variation, "[P=0]": items like a stream's, maybe none.
  int ReadAlternative() {
    Expect('[');
    TIrpStream stream;
    if (Peek() != ']') {
      do stream.Items.push_back(ReadItem());
      while (Accept(','));
    }
    Expect(']');
    mProtocol.Streams.push_back(std::move(stream));
    return static_cast<int>(mProtocol.Streams.size()) - 1;
  }

  void ReadRepeatMarker(TIrpStream& stream) {
    const char c = Peek();
    if (c == '*') {
      ++mPos;
      stream.MinRepeats = 0;
      stream.RepeatsForever = true;
    } else if (c == '+') {
      ++mPos;
      stream.RepeatsForever = true;
    } else if (std::isdigit(static_cast<unsigned char>(c))) {
      stream.MinRepeats = static_cast<int>(ReadNumber());
      stream.RepeatsForever = Accept('+');
    }
  }

  TIrpItem ReadItem() {
    TIrpItem item;
    const char c = Peek();
    if (c == '^') {
      ++mPos;
      item.Kind = TIrpItemKind::Extent;
      item.Microseconds = ReadDuration();
    } else if (c == '-' && std::isdigit(static_cast<unsigned char>(PeekAt(1)))) {
      ++mPos;
      item.Kind = TIrpItemKind::Gap;
      item.Microseconds = ReadDuration();
    } else if ((c == '(' && !IsParenthesisedBitField()) || c == '<') {
      item.Kind = TIrpItemKind::Stream;
      item.Stream = ReadStream(c == '<' ? ReadBitCoding() : -1);
    } else if (c == '[') {
      item.Kind = TIrpItemKind::Variation;
      for (std::size_t part = 0; part < item.Alternatives.size() && Peek() == '['; ++part)
        item.Alternatives[part] = ReadAlternative();
    } else if (IsNameStart(c) && IsAssignment()) {
      item.Kind = TIrpItemKind::Assignment;
      item.Variable = VariableOf(ReadName());
      Expect('=');
      item.Expr = ReadExpr();
    } else if (std::isdigit(static_cast<unsigned char>(c)) && !IsBitFieldAhead()) {
      item.Kind = TIrpItemKind::Flash;
      item.Microseconds = ReadDuration();
    } else {
      item.Kind = TIrpItemKind::BitField;
      item.Expr = ReadUnary();
      if (mProtocol.Exprs[static_cast<std::size_t>(item.Expr)].Op != TIrpOp::BitField)
        Fail(QStringLiteral("a duration or bit field expected"));
    }
    return item;
  }

  bool IsAssignment() {
    std::size_t p = mPos;
    while (p < mText.size() && IsNameChar(mText[p])) ++p;
    while (p < mText.size() && mText[p] == ' ') ++p;
    return p < mText.size() && mText[p] == '=';
  }
  // "(D^S^F):8" is a bit field, "(16,-4,1)" a stream.
  bool IsParenthesisedBitField() const {
    int depth = 0;
    std::size_t p = mPos;
    for (; p < mText.size(); ++p) {
      if (mText[p] == '(') ++depth;
      if (mText[p] == ')' && --depth == 0) break;
    }
    for (++p; p < mText.size() && mText[p] == ' ';) ++p;
    return p < mText.size() && mText[p] == ':';
  }
  bool IsBitFieldAhead() const {
    std::size_t p = mPos;
    while (p < mText.size() && (std::isdigit(static_cast<unsigned char>(mText[p])))) ++p;
    return p < mText.size() && mText[p] == ':';
  }

  int VariableOf(const QString& name) {
    const int found = mProtocol.FindVariable(name);
    if (found >= 0) return found;
    TIrpVariable variable;
    variable.Name = name;
    mProtocol.Variables.push_back(variable);
    return static_cast<int>(mProtocol.Variables.size()) - 1;
  }

  int Add(TIrpExpr expr) {
    mProtocol.Exprs.push_back(expr);
    return static_cast<int>(mProtocol.Exprs.size()) - 1;
  }
  int Binary(TIrpOp op, int left, int right) {
    TIrpExpr expr;
    expr.Op = op;
    expr.Left = left;
    expr.Right = right;
    return Add(expr);
  }

  int ReadExpr() { return ReadBinary(0); }
  // The operands and operators of one level of binding, then the tighter levels.
  int ReadBinary(std::size_t level) {
    if (level == BinaryLevels.size()) return ReadUnary();
    int left = ReadBinary(level + 1);
    while (const TBinaryOperator* found = OperatorAhead(BinaryLevels[level])) {
      mPos += std::strlen(found->Token);
      left = Binary(found->Op, left, ReadBinary(level + 1));
    }
    return left;
  }
  const TBinaryOperator* OperatorAhead(const TBinaryLevel& operators) {
    SkipSpace();
    for (const TBinaryOperator& op : operators)
      if (op.Token != nullptr && mText.substr(mPos).starts_with(op.Token)) return &op;
    return nullptr;
  }
  int ReadUnary() {
    const char c = Peek();
    if (c == '-' || c == '!' || c == '#') {
      ++mPos;
      const TIrpOp op = c == '-' ? TIrpOp::Negate : c == '!' ? TIrpOp::Not : TIrpOp::BitCount;
      return Binary(op, ReadUnary(), -1);
    }
    if (c == '~') {
      ++mPos;
      const int operand = ReadUnary();
      TIrpExpr& expr = mProtocol.Exprs[static_cast<std::size_t>(operand)];
      // The complement of a bit field is kept on the field, where recognition solves it.
      if (expr.Op == TIrpOp::BitField && !expr.Complemented) {
        expr.Complemented = true;
        return operand;
      }
      return Binary(TIrpOp::Complement, operand, -1);
    }
    return ReadBitField();
  }
  int ReadBitField() {
    const int value = ReadPrimary();
    if (Peek() != ':') return value;
    ++mPos;
    TIrpExpr field;
    field.Op = TIrpOp::BitField;
    field.Left = value;
    field.Right = Accept('-') ? Binary(TIrpOp::Negate, ReadPrimary(), -1) : ReadPrimary();
    if (Accept(':')) field.Offset = ReadPrimary();
    return Add(field);
  }
  int ReadPrimary() {
    const char c = Peek();
    if (c == '(') {
      ++mPos;
      const int inner = ReadExpr();
      Expect(')');
      return inner;
    }
    TIrpExpr expr;
    if (IsNameStart(c)) {
      expr.Op = TIrpOp::Variable;
      expr.Variable = VariableOf(ReadName());
    } else {
      expr.Number = static_cast<std::int64_t>(ReadNumber());
    }
    return Add(expr);
  }

  void ReadDefinitions() {
    Expect('{');
    do {
      TIrpVariable& variable = Declared(ReadName(), TIrpVariableKind::Definition);
      const int index = static_cast<int>(&variable - mProtocol.Variables.data());
      Expect('=');
      const int expr = ReadExpr();
      mProtocol.Variables[static_cast<std::size_t>(index)].Expr = expr;
    } while (Accept(','));
    Expect('}');
  }

  void ReadParameterList() {
    Expect('[');
    do {
      const QString name = ReadName();
      Accept('@');  // a remembered parameter (the toggle): its default is where it starts
      Expect(':');
      const auto min = static_cast<std::int64_t>(ReadNumber());
      Expect('.');
      Expect('.');
      const auto max = static_cast<std::int64_t>(ReadNumber());
      const int defaultExpr = Accept('=') ? ReadExpr() : -1;
      TIrpVariable& variable = Declared(name, TIrpVariableKind::Parameter);
      variable.Min = min;
      variable.Max = max;
      variable.Default = defaultExpr;
    } while (Accept(','));
    Expect(']');
  }

  TIrpVariable& Declared(const QString& name, TIrpVariableKind kind) {
    TIrpVariable& variable = mProtocol.Variables[static_cast<std::size_t>(VariableOf(name))];
    if (variable.Kind != TIrpVariableKind::Assigned) Fail(QStringLiteral("a name declared twice"));
    variable.Kind = kind;
    return variable;
  }

  // Every name is a parameter, a definition, or assigned somewhere in the streams.
  void CheckNames() {
    for (std::size_t v = 0; v < mProtocol.Variables.size(); ++v) {
      if (mProtocol.Variables[v].Kind != TIrpVariableKind::Assigned || IsAssigned(v)) continue;
      throw ENorvaError(
          QStringLiteral("Protocol definition: %1 is not declared in \"%2\"")
              .arg(mProtocol.Variables[v].Name,
                   QLatin1String(mText.data(), static_cast<qsizetype>(mText.size()))));
    }
  }
  bool IsAssigned(std::size_t variable) const {
    for (const TIrpStream& stream : mProtocol.Streams)
      for (const TIrpItem& item : stream.Items)
        if (item.Kind == TIrpItemKind::Assignment && item.Variable == static_cast<int>(variable))
          return true;
    return false;
  }

  void FindRepeatedStream() {
    const TIrpStream& top = mProtocol.Streams[static_cast<std::size_t>(mProtocol.Top)];
    if (top.RepeatsForever) {
      mProtocol.Repeated = mProtocol.Top;
      return;
    }
    for (const TIrpItem& item : top.Items) {
      if (item.Kind == TIrpItemKind::Stream &&
          mProtocol.Streams[static_cast<std::size_t>(item.Stream)].RepeatsForever) {
        mProtocol.Repeated = item.Stream;
        return;
      }
    }
  }

  std::string_view mText;
  std::size_t mPos = 0;
  TIrpProtocol mProtocol;
};

}  // namespace

TIrpProtocol ParseIrp(std::string_view text) { return TIrpParser(text).Parse(); }

}  // namespace norva
