// Encoding, names and the text of a decode; decoding is in IRProtocolDecode.cpp.
#include <IR/IRProtocols.h>
#include <IR/IRRawSignal.h>
#include <IR/IrpCatalogue.h>
#include <IR/IrpEngine.h>

#include <NorvaGlobal/Exceptions.h>

namespace norva {

namespace {

QString ParameterName(std::size_t index) { return QString::fromUtf16(IRParameterNames[index]); }

// The values of the protocol's variables: the parameters given, checked against their ranges,
// then the defaults of those not given.
TIrpValues ValuesOf(const TIrpCatalogueEntry& entry, TIRProtocolParameters parameters) {
  const TIrpProtocol& protocol = entry.Protocol;
  TIrpValues values{};
  std::vector<bool> given(protocol.Variables.size(), false);
  for (std::size_t i = 0; i < IRParameterNames.size(); ++i) {
    const std::optional<std::int64_t>& value = ParameterAt(parameters, i);
    if (!value) continue;
    const int variable = entry.Parameters[i];
    if (variable < 0)
      throw ENorvaError(
          QStringLiteral("%1 has no parameter %2.").arg(entry.Name, ParameterName(i)));
    values[static_cast<std::size_t>(variable)] = *value;
    given[static_cast<std::size_t>(variable)] = true;
  }
  for (std::size_t v = 0; v < protocol.Variables.size(); ++v) {
    const TIrpVariable& variable = protocol.Variables[v];
    if (variable.Kind != TIrpVariableKind::Parameter || given[v]) continue;
    if (variable.Default < 0)
      throw ENorvaError(
          QStringLiteral("%1 needs the parameter %2.").arg(entry.Name, variable.Name));
    values[v] = EvaluateIrp(protocol, variable.Default, values);
  }
  for (std::size_t v = 0; v < protocol.Variables.size(); ++v) {
    const TIrpVariable& variable = protocol.Variables[v];
    if (variable.Kind != TIrpVariableKind::Parameter) continue;
    if (values[v] < variable.Min || values[v] > variable.Max)
      throw ENorvaError(QStringLiteral("%1=%2 is out of range for %3 (%4..%5).")
                            .arg(variable.Name)
                            .arg(values[v])
                            .arg(entry.Name)
                            .arg(variable.Min)
                            .arg(variable.Max));
  }
  return values;
}

QList<double> ListOf(const std::vector<double>& durations) {
  return QList<double>(durations.begin(), durations.end());
}

}  // namespace

QString DecodeText(const TIRDecode& decode) {
  if (!decode.IsKnown()) return QStringLiteral("unknown ") + decode.Generic;
  QString text = decode.Protocol;
  TIRProtocolParameters parameters = decode.Parameters;
  for (std::size_t i = 0; i < IRParameterNames.size(); ++i) {
    const std::optional<std::int64_t>& value = ParameterAt(parameters, i);
    if (value) text += QStringLiteral(" %1=%2").arg(ParameterName(i)).arg(*value);
  }
  for (const TIRDecode& part : decode.Then) text += QStringLiteral(" + ") + DecodeText(part);
  return text;
}

TIRStreamData EncodeIRStream(QStringView protocolName, const TIRProtocolParameters& parameters) {
  const TIrpCatalogueEntry* entry = FindIrpEntry(protocolName);
  if (entry == nullptr)
    throw ENorvaError(QStringLiteral("Unknown infra-red protocol: %1").arg(protocolName));
  const TIrpRendering rendering = RenderIrp(entry->Protocol, ValuesOf(*entry, parameters));
  const double frequency = entry->Protocol.FrequencyHz;
  try {
    // A code sent once and then again the same way is one word repeated; one whose repeated
    // frame holds a long gap (Denon's two halves) is two words repeated in turn, as a hex code
    // with that gap reads.
    if (rendering.Once.empty() || rendering.Once == rendering.Repeat)
      return RawSignalStream(frequency, ListOf(rendering.Repeat));
    return WordsStream(frequency, ListOf(rendering.Once), ListOf(rendering.Repeat));
  } catch (const ENorvaError& error) {
    TIRDecode decode;
    decode.Protocol = entry->Name;
    decode.Parameters = parameters;
    throw ENorvaError(QStringLiteral("%1 does not fit an infra-red stream: %2")
                          .arg(DecodeText(decode), error.Message()));
  }
}

QStringList IRProtocolNames() {
  QStringList names;
  for (const TIrpCatalogueEntry& entry : IrpCatalogue()) names << entry.Name;
  return names;
}

QString FindIRProtocol(QStringView name) {
  const TIrpCatalogueEntry* entry = FindIrpEntry(name);
  return entry != nullptr ? entry->Name : QString();
}

}  // namespace norva
