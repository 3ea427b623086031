// Stands in for the protocol engine until it is merged: encodes nothing, decodes nothing.
#include <IR/IRProtocols.h>

#include <NorvaGlobal/Exceptions.h>

namespace norva {

QString DecodeText(const TIRDecode& decode) { return decode.Protocol; }

QList<TIRDecode> DecodeIRStream(const TIRStreamData&) { return {}; }

QList<TIRDecode> DecodeIRSignal(double, const QList<double>&) { return {}; }

TIRStreamData EncodeIRStream(QStringView, const TIRProtocolParameters&) {
  throw ENorvaError(QStringLiteral("not yet"));
}

QStringList IRProtocolNames() { return {}; }

QString FindIRProtocol(QStringView) { return {}; }

}  // namespace norva
