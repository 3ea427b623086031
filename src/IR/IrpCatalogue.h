#pragma once
// The protocols of the table, compiled once at first use, and what the API needs to know of
// each: its name, its compiled definition, where its D, S, F and T live.

#include <IR/IRProtocols.h>
#include <IR/IrpNotation.h>

#include <array>
#include <optional>
#include <vector>

namespace norva {

// The public parameters in the order of TIRProtocolParameters.
inline constexpr std::array<const char16_t*, 4> IRParameterNames = {u"D", u"S", u"F", u"T"};

struct TIrpCatalogueEntry {
  QString Name;
  TIrpProtocol Protocol;
  std::array<int, 4> Parameters{};  // the variable of D, S, F and T, -1 when the protocol has none
};

// Raises ENorvaError when a definition of the table does not compile.
const std::vector<TIrpCatalogueEntry>& IrpCatalogue();
// The entry of `name` compared without regard to case, or nullptr.
const TIrpCatalogueEntry* FindIrpEntry(QStringView name);

// Access to D, S, F and T of the public parameter set by position.
std::optional<std::int64_t>& ParameterAt(TIRProtocolParameters& parameters, std::size_t index);

}  // namespace norva
