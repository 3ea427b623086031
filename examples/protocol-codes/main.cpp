// Codes as installers meet them today: a button given by protocol ("NEC1 D=4 F=8") built into a
// stream, a learnt capture of a held button read from another tool's file and decoded, and the
// same button learnt again, a little off, recognised in the library.
#include <IR/IR.h>
#include <IR_Database/IR_Database.h>
#include <OrbGlobal/OrbGlobal.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>

namespace {

// A Flipper remote file with one learnt capture: NEC1 D=4 F=8, its frame and two ditto frames.
constexpr char RemoteFile[] =
    "Filetype: IR signals file\nVersion: 1\n#\nname: Input\ntype: raw\nfrequency: 38000\n"
    "duty_cycle: 0.33\ndata: 9000 4500 560 560 560 560 560 1690 560 560 560 560 560 560 560 560 "
    "560 560 560 1690 560 1690 560 560 560 1690 560 1690 560 1690 560 1690 560 1690 560 560 560 "
    "560 560 560 560 1690 560 560 560 560 560 560 560 560 560 1690 560 1690 560 1690 560 560 560 "
    "1690 560 1690 560 1690 560 1690 560 40000 9000 2250 560 96000 9000 2250 560\n";

int Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  norva::RegisterCommandClasses();

  // A code from a public database: protocol and parameters to a stream and its hex code.
  const norva::TIRStreamData power = norva::EncodeIRStream(u"nec1", {4, {}, 8, {}});
  std::printf("NEC1 D=4 F=8: %s\n", qPrintable(norva::HexCodeOf(power)));

  // Another tool's file imported into a library: the capture kept as the remote sends it.
  QTemporaryDir folder;
  norva::TIRDB library(folder.filePath(QStringLiteral("IR.xml")), false);
  const norva::TCodeImportResult imported = norva::ImportCodeFile(
      library, RemoteFile,
      {QStringLiteral("remote.ir"), QStringLiteral("Acme"), QStringLiteral("TV"), {}});
  std::printf("added %d, skipped %d, refused %lld\n", imported.Added, imported.Skipped,
              static_cast<long long>(imported.Refusals.size()));
  const auto* input = qobject_cast<const norva::TIRStream*>(
      library.GetOrAddModel(QStringLiteral("Acme"), QStringLiteral("TV"))->GetCommand(0));
  if (!input) return Fail("the capture was not imported");
  const QList<norva::TIRDecode> decodes = norva::DecodeIRStream(input->Data());
  if (decodes.isEmpty()) return Fail("the imported stream has no end");
  std::printf("%s: %s (%s)\n", qPrintable(input->GetName()),
              qPrintable(norva::DecodeText(decodes.first())), qPrintable(input->Status()));

  // The same button learnt again, every duration 3 % longer: no exact match, the same button.
  QList<double> relearnt;
  for (const QString& word :
       QString::fromLatin1(RemoteFile).split(QStringLiteral("data: ")).last().split(u' '))
    relearnt << word.toDouble() * 1.03;
  const norva::TIRStreamData again = norva::CaptureStream(38000, relearnt);
  for (const norva::TStreamName& name : library.RecogniseNames(again))
    std::printf("learnt again: the same button as %s (%s)\n", qPrintable(name.Name),
                qPrintable(name.Category));
  return library.RecogniseNames(again).isEmpty() ? Fail("the button was not recognised") : 0;
}
