// A remote control's codes as an installer imports them: hex codes read into infra-red streams,
// button classes proposed from the command names, a serial command beside them, the list saved
// as XML and read back, and a native amplifier code built for a zone.
#include <ButtonClasses/ButtonClasses.h>
#include <IR/IR.h>
#include <OrbGlobal/OrbGlobal.h>

#include <QCoreApplication>

#include <cstdio>

namespace {

struct TLearntCode {
  const char* Name;
  const char* HexCode;
};

// Two codes of a real TV remote and one with a typing slip.
constexpr TLearntCode Codes[] = {
    {"Vol+",
     "0000 006D 0000 0022 0157 00AC 0015 0016 0015 0016 0015 0041 0015 0016 0015 0016 "
     "0015 0016 0015 0016 0015 0016 0015 0041 0015 0041 0015 0016 0015 0041 0015 0041 "
     "0015 0041 0015 0041 0015 0041 0015 0016 0015 0016 0015 0016 0015 0041 0015 0016 "
     "0015 0016 0015 0016 0015 0016 0015 0041 0015 0041 0015 0041 0015 0016 0015 0041 "
     "0015 0041 0015 0041 0015 0041 0015 05ED"},
    {"Power", "0000 006D 0000 0002 0157 00AC 0015 05ED"},
    {"Mute", "0000 006D 0000 0001 0015  0041"},
};

int Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  norva::RegisterCommandClasses();

  norva::TCommandObjectList commands;
  for (const TLearntCode& code : Codes) {
    auto* stream = static_cast<norva::TIRStream*>(
        commands.AddNewCommandObject(&norva::TIRStream::staticMetaObject));
    stream->SetName(QString::fromLatin1(code.Name));
    try {
      stream->SetHexCode(QString::fromLatin1(code.HexCode));
    } catch (const norva::ENorvaError& error) {
      // A code that cannot be read leaves the stream empty; the list will not save it.
      std::printf("%s: %s\n", code.Name, qPrintable(error.Message()));
      continue;
    }
    stream->AutoAssignButtonClass();
    const norva::TButtonClasses& classes = stream->GetButtonClasses();
    std::printf("%s: %s, %s\n", code.Name, qPrintable(stream->Status()),
                classes.isEmpty() ? "no button class" : qPrintable(classes.first().GetName()));
  }

  auto* serial = static_cast<norva::TRS232Command*>(
      commands.AddNewCommandObject(&norva::TRS232Command::staticMetaObject));
  serial->SetName(QStringLiteral("Input HDMI"));
  serial->SetDataString(QStringLiteral("2A494E0D"));

  pugi::xml_document document;
  commands.Save(document.append_child("commands"), true);
  const QByteArray file = norva::SaveXMLDocument(document);
  std::printf("saved %lld bytes\n", static_cast<long long>(file.size()));

  pugi::xml_document reread;
  norva::LoadXMLDocument(reread, file);
  norva::TCommandObjectList readBack;
  readBack.Load(reread.document_element(), true);
  if (readBack.GetCommandCount() != 3) return Fail("the saved list did not read back");
  for (int i = 0; i < readBack.GetCommandCount(); ++i) {
    const norva::TCommandObject* command = readBack.GetCommand(i);
    std::printf("read back: %s (%s)\n", qPrintable(command->GetName()),
                command->metaObject()->className());
  }

  norva::TNorvaIRStream native;
  native.SetNorva(12, norva::nvVolUpCmd, norva::AmpCommand);
  std::printf("%s, %s: frame %s\n", qPrintable(native.GetName()), qPrintable(native.GetCategory()),
              qPrintable(native.GetNorvaStr()));
  return 0;
}
