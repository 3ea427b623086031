#include <IR/IRProtocolTable.h>
#include <IR/IrpCatalogue.h>
#include <IR/IrpWalk.h>

#include <NorvaGlobal/Exceptions.h>

namespace norva {

namespace {

std::vector<TIrpCatalogueEntry> Compile() {
  std::vector<TIrpCatalogueEntry> entries;
  for (const TIRProtocolEntry& row : IRProtocolEntries()) {
    TIrpCatalogueEntry entry;
    entry.Name = QString::fromLatin1(row.Name);
    entry.Protocol = ParseIrp(row.Definition);
    if (entry.Protocol.Variables.size() > MaxIrpVariables)
      throw ENorvaError(QStringLiteral("Protocol definition of %1 has more than %2 names")
                            .arg(entry.Name)
                            .arg(MaxIrpVariables));
    for (std::size_t i = 0; i < IRParameterNames.size(); ++i) {
      const int variable = entry.Protocol.FindVariable(QStringView(IRParameterNames[i]));
      const bool parameter =
          variable >= 0 && entry.Protocol.Variables[static_cast<std::size_t>(variable)].Kind ==
                               TIrpVariableKind::Parameter;
      entry.Parameters[i] = parameter ? variable : -1;
    }
    entries.push_back(std::move(entry));
  }
  return entries;
}

}  // namespace

const std::vector<TIrpCatalogueEntry>& IrpCatalogue() {
  static const std::vector<TIrpCatalogueEntry> catalogue = Compile();
  return catalogue;
}

const TIrpCatalogueEntry* FindIrpEntry(QStringView name) {
  for (const TIrpCatalogueEntry& entry : IrpCatalogue())
    if (name.compare(entry.Name, Qt::CaseInsensitive) == 0) return &entry;
  return nullptr;
}

std::optional<std::int64_t>& ParameterAt(TIRProtocolParameters& parameters, std::size_t index) {
  switch (index) {
    case 0: return parameters.D;
    case 1: return parameters.S;
    case 2: return parameters.F;
    default: return parameters.T;
  }
}

}  // namespace norva
