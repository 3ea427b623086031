// Arbitrary bytes as a Girr document, a lircd.conf file and a protocol CSV file: no reader raises
// or crashes, every entry has a place and a code (a stream read from timings is never empty, a
// protocol code names its protocol), and every refusal a place and a reason.
#include <IR_Database/CodeFiles/GirrFile.h>
#include <IR_Database/CodeFiles/LircdFile.h>
#include <IR_Database/CodeFiles/ProtocolCsvFile.h>

#include <cstdint>
#include <cstdlib>

namespace {

void Check(const norva::TCodeFileEntries& read) {
  for (const norva::TCodeFileEntry& entry : read.Entries) {
    if (entry.Place.isEmpty()) std::abort();
    if (const auto* stream = std::get_if<norva::TIRStreamData>(&entry.Code))
      if (stream->IsEmpty()) std::abort();
    if (const auto* code = std::get_if<norva::TProtocolCode>(&entry.Code))
      if (code->Protocol.isEmpty()) std::abort();
  }
  for (const norva::TCodeFileRefusal& refusal : read.Refusals)
    if (refusal.Place.isEmpty() || refusal.Reason.isEmpty()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QString path = QStringLiteral("codes/Acme/TV/4,-1.csv");
  (void)norva::IsGirrFile(bytes);
  (void)norva::IsLircdFile(bytes);
  (void)norva::IsProtocolCsvFile(bytes);
  Check(norva::ReadGirrFile(bytes, path));
  Check(norva::ReadLircdFile(bytes, path));
  Check(norva::ReadProtocolCsvFile(bytes, path));
  return 0;
}
