#include <IR_Database/CodeFileFormats.h>

#include <IR_Database/CodeFiles/FlipperFile.h>
#include <IR_Database/CodeFiles/GirrFile.h>
#include <IR_Database/CodeFiles/LircdFile.h>
#include <IR_Database/CodeFiles/ProntoLines.h>
#include <IR_Database/CodeFiles/ProtocolCsvFile.h>
#include <IR_Database/CodeFiles/SendirLines.h>

namespace norva {

const QList<TCodeFileFormat>& CodeFileFormats() {
  // Lines of a name and a hex code last: other formats may hold such lines too.
  static const QList<TCodeFileFormat> formats = {
      {QStringLiteral("flipper"), &IsFlipperFile, &ReadFlipperFile},
      {QStringLiteral("girr"), &IsGirrFile, &ReadGirrFile},
      {QStringLiteral("lircd"), &IsLircdFile, &ReadLircdFile},
      {QStringLiteral("csv"), &IsProtocolCsvFile, &ReadProtocolCsvFile},
      {QStringLiteral("sendir"), &IsSendirLines, &ReadSendirLines},
      {QStringLiteral("pronto"), &IsProntoLines, &ReadProntoLines},
  };
  return formats;
}

}  // namespace norva
