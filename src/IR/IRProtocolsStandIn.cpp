// Temporary: lets the code built on the protocol engine compile and run until the engine lands.
// Every stream decodes as unknown with an empty description; nothing encodes.
#include <IR/IRProtocols.h>
#include <IR/IRRawSignal.h>
#include <NorvaGlobal/Exceptions.h>

namespace norva {

QString DecodeText(const TIRDecode& decode) {
  if (!decode.IsKnown()) return QStringLiteral("unknown ") + decode.Generic;
  QString text = decode.Protocol;
  const auto append = [&text](const char* name, const std::optional<std::int64_t>& value) {
    if (value) text += QStringLiteral(" %1=%2").arg(QLatin1String(name)).arg(*value);
  };
  append("D", decode.Parameters.D);
  append("S", decode.Parameters.S);
  append("F", decode.Parameters.F);
  append("T", decode.Parameters.T);
  return text;
}

QList<TIRDecode> DecodeIRStream(const TIRStreamData& stream) {
  if (stream.IsEmpty() || stream.GetEndPos(false) < 0) return {};
  return {TIRDecode{}};
}

QList<TIRDecode> DecodeIRSignal(double frequencyHz, const QList<double>& microseconds) {
  return DecodeIRStream(RawSignalStream(frequencyHz, microseconds));
}

TIRStreamData EncodeIRStream(QStringView protocol, const TIRProtocolParameters&) {
  throw ENorvaError(QStringLiteral("Unknown infra-red protocol: ") + protocol.toString());
}

QStringList IRProtocolNames() { return {}; }

QString FindIRProtocol(QStringView) { return {}; }

}  // namespace norva
