// The arithmetic of protocol definitions: 64-bit integers that never trap (a division by zero or
// a shift beyond the word gives 0), so that no parameter a user types can crash an encoding.
#include <IR/IrpWalk.h>

#include <algorithm>
#include <bit>

namespace norva {

namespace {

// Definitions may refer to definitions; a chain deeper than this is a loop and counts as 0.
constexpr int MaxDefinitionDepth = 16;

std::uint64_t Reversed(std::uint64_t bits, std::int64_t width) {
  std::uint64_t reversed = 0;
  for (std::int64_t i = 0; i < width; ++i, bits >>= 1) reversed = reversed << 1 | (bits & 1);
  return reversed;
}

std::int64_t Shifted(std::int64_t value, std::int64_t count, bool left) {
  if (count < 0 || count > 63) return 0;
  const auto bits = static_cast<std::uint64_t>(value);
  return static_cast<std::int64_t>(left ? bits << count : bits >> count);
}

std::int64_t Evaluate(const TIrpProtocol& protocol, int index, const TIrpValues& values,
                      int depth) {
  if (index < 0 || depth > MaxDefinitionDepth) return 0;
  const TIrpExpr& expr = protocol.Exprs[static_cast<std::size_t>(index)];
  const auto operand = [&](int which) { return Evaluate(protocol, which, values, depth); };
  // Wrapping arithmetic: the sums are done on unsigned words.
  const auto left = [&] { return static_cast<std::uint64_t>(operand(expr.Left)); };
  const auto right = [&] { return static_cast<std::uint64_t>(operand(expr.Right)); };
  switch (expr.Op) {
    case TIrpOp::Number: return expr.Number;
    case TIrpOp::Variable: {
      const TIrpVariable& variable = protocol.Variables[static_cast<std::size_t>(expr.Variable)];
      if (variable.Kind == TIrpVariableKind::Definition)
        return Evaluate(protocol, variable.Expr, values, depth + 1);
      return expr.Variable < MaxIrpVariables ? values[static_cast<std::size_t>(expr.Variable)] : 0;
    }
    case TIrpOp::BitField:
      return static_cast<std::int64_t>(IrpFieldBits(operand(expr.Left), operand(expr.Right),
                                                    operand(expr.Offset), expr.Complemented));
    case TIrpOp::Negate: return static_cast<std::int64_t>(0 - left());
    case TIrpOp::Complement: return static_cast<std::int64_t>(~left());
    case TIrpOp::Not: return operand(expr.Left) == 0 ? 1 : 0;
    case TIrpOp::BitCount: return std::popcount(left());
    case TIrpOp::Multiply: return static_cast<std::int64_t>(left() * right());
    case TIrpOp::Divide:
    case TIrpOp::Modulo: {
      const std::int64_t divisor = operand(expr.Right);
      const std::int64_t dividend = operand(expr.Left);
      if (divisor == 0 || (divisor == -1 && dividend == INT64_MIN)) return 0;
      return expr.Op == TIrpOp::Divide ? dividend / divisor : dividend % divisor;
    }
    case TIrpOp::Add: return static_cast<std::int64_t>(left() + right());
    case TIrpOp::Subtract: return static_cast<std::int64_t>(left() - right());
    case TIrpOp::ShiftLeft: return Shifted(operand(expr.Left), operand(expr.Right), true);
    case TIrpOp::ShiftRight: return Shifted(operand(expr.Left), operand(expr.Right), false);
    case TIrpOp::And: return static_cast<std::int64_t>(left() & right());
    case TIrpOp::Xor: return static_cast<std::int64_t>(left() ^ right());
    case TIrpOp::Or: return static_cast<std::int64_t>(left() | right());
  }
  return 0;
}

}  // namespace

std::int64_t EvaluateIrp(const TIrpProtocol& protocol, int expr, const TIrpValues& values) {
  return Evaluate(protocol, expr, values, 0);
}

bool IsConstantIrp(const TIrpProtocol& protocol, int expr) {
  if (expr < 0) return true;
  const TIrpExpr& node = protocol.Exprs[static_cast<std::size_t>(expr)];
  return node.Op != TIrpOp::Variable && IsConstantIrp(protocol, node.Left) &&
         IsConstantIrp(protocol, node.Right) && IsConstantIrp(protocol, node.Offset);
}

std::uint64_t IrpWidthMask(std::int64_t width) {
  if (width <= 0) return 0;
  return width >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << width) - 1;
}

std::uint64_t IrpFieldBits(std::int64_t value, std::int64_t width, std::int64_t offset,
                           bool complemented) {
  const std::int64_t size = std::min<std::int64_t>(width < 0 ? -width : width, 64);
  std::uint64_t bits = static_cast<std::uint64_t>(complemented ? ~value : value);
  bits = offset > 0 && offset < 64 ? bits >> offset : offset == 0 ? bits : 0;
  bits &= IrpWidthMask(size);
  return width < 0 ? Reversed(bits, size) : bits;
}

}  // namespace norva
