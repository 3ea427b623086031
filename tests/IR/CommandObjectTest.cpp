// Command objects as an editor and a file see them: every change undoes and redoes back to the
// save point, files come out byte for byte as the golden ones, bad files fail without touching the
// list, and commands find their button classes by name.

#include "FailureOf.h"

#include <IR/IR.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <support/QtPrinters.h>

#include <QFile>

#include <gtest/gtest.h>

#include <functional>

using namespace norva;

namespace {

class TCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    RegisterCommandClasses();
    while (UndoDisabled()) EnableUndo();
    Undo().Empty();
    Redo().Empty();
  }
  void TearDown() override { SetUp(); }
};

QByteArray Golden(const char* name) {
  QFile file(QStringLiteral(NORVA_SOURCE_DIR "/tests/IR/data/") + name);
  if (!file.open(QIODevice::ReadOnly)) return "(missing " + QByteArray(name) + ")";
  return file.readAll();
}

// The list as a file holds it, under a root element.
QByteArray Saved(const TCommandObjectList& list, bool indexed) {
  pugi::xml_document document;
  list.Save(document.append_child("commands"), indexed);
  return SaveXMLDocument(document);
}

// One command in a file of its own.
QByteArray SavedCommand(const TCommandObject& command) {
  pugi::xml_document document;
  command.Save(document.append_child(CommandElementName(command.GetClass())));
  return SaveXMLDocument(document);
}

void Load(TCommandObjectList& list, const QByteArray& text, bool indexed) {
  pugi::xml_document document;
  LoadXMLDocument(document, text);
  list.Load(document.document_element(), indexed);
}

TRS232Command* AddSerial(TCommandObjectList& list, const QString& name, const QString& data) {
  auto* command =
      static_cast<TRS232Command*>(list.AddNewCommandObject(&TRS232Command::staticMetaObject));
  command->SetName(name);
  command->SetDataString(data);
  return command;
}

// A projector's commands: a serial one with every setting changed, a network one, and a stream.
void FillSample(TCommandObjectList& list) {
  TRS232Command* serial = AddSerial(list, "Lamp on", "2A4C4F4E0D");
  serial->SetBaudRate(19200);
  serial->SetDatabits(7);
  serial->SetStopbits(stop_bits_1_5);
  serial->SetParity(parity_even);
  serial->SetBinary(true);
  serial->SetAutoRepeatDelay(3);
  serial->SetCategory("Projector");
  serial->SetGUIDString("{11111111-2222-3333-4444-555555555555}");
  serial->AddButtonClass(TButtonClass(SystemClassGroup, ButtonClass_Standby));
  auto* network = static_cast<TIPCommand*>(list.AddNewCommandObject(&TIPCommand::staticMetaObject));
  network->SetName("Input HDMI");
  network->SetIPProtocol(UDP_IP);
  network->SetPort(4352);
  network->SetDataString("25315343");
  network->SetGUIDString("{66666666-7777-8888-9999-AAAAAAAAAAAA}");
  list.AddNewCommandObject(&TIPCommand::staticMetaObject);  // empty: never written
  auto* stream = static_cast<TIRStream*>(list.AddNewCommandObject(&TIRStream::staticMetaObject));
  stream->SetName("Vol+");
  stream->SetHexCode("0000 006D 0000 0004 0016 0016 0016 0041 0016 0016 0016 0400");
  stream->SetRepeats(2);
  stream->SetGUIDString("{BBBBBBBB-CCCC-DDDD-EEEE-FFFFFFFFFFFF}");
  stream->AutoAssignButtonClass();
}

// Stands in for the IR database's model: it files its commands under its own name.
class TModelStandIn : public TOrbObject, public ICommandCategoryOwner {
 public:
  TModelStandIn() : mCommands(this) {}
  QString CommandCategory() const override { return mCategory; }
  TCommandObjectList mCommands;
  QString mCategory = QStringLiteral("Projector - X1");
};

// A command list that files its own commands, as the IR database's model does.
class TModelList : public TCommandObjectList, public ICommandCategoryOwner {
 public:
  QString CommandCategory() const override { return QStringLiteral("Amplifier - A9"); }
};

// A document holding a macro, as a keypad configuration holds its commands.
class TMacroHolder : public TOrbObject {
 public:
  TMacroHolder() : mMacro(this) {}
  TIRMacro mMacro;
};

}  // namespace

TEST_F(TCommandTest, EveryEditUndoesAndRedoesBackToTheSavePoint) {
  TMacroHolder holder;
  TIRMacro& macro = holder.mMacro;
  FillSample(macro);
  macro.Clear();  // the histories hold the sample's own making; start from a plain pair
  FillSample(macro);
  const std::vector<std::pair<const char*, std::function<void()>>> edits = {
      {"data", [&] { static_cast<TRS232Command*>(macro.GetCommand(0))->SetDataString("0D0A"); }},
      {"enumeration",
       [&] { static_cast<TRS232Command*>(macro.GetCommand(0))->SetParity(parity_space); }},
      {"protocol", [&] { static_cast<TIPCommand*>(macro.GetCommand(1))->SetIPProtocol(TCP_IP); }},
      {"button class",
       [&] { macro.GetCommand(1)->AddButtonClass(TButtonClass(CursorClassGroup, 5)); }},
      {"class data", [&] { macro.GetCommand(0)->SetButtonClassData(""); }},
      {"category", [&] { macro.GetCommand(3)->SetCategory("Amplifier"); }},
      {"insert", [&] { AddSerial(macro, "Lamp off", "2A4C4F46"); }},
      {"delete", [&] { macro.GetCommand(1)->Delete(); }},
      {"move", [&] { macro.GetCommand(3)->Move(0); }},
      {"delete two",
       [&] {
         macro.GetCommand(2)->Delete();
         macro.GetCommand(2)->Delete();
       }},
      {"macro flag", [&] { macro.SetAlternating(true); }},
  };
  for (const auto& [what, edit] : edits) {
    SCOPED_TRACE(what);
    MaintainUndo();
    const QByteArray before = Saved(macro, true);
    edit();
    MaintainUndo();
    const QByteArray after = Saved(macro, true);
    ASSERT_NE(before, after);
    Undo().Revert();
    EXPECT_EQ(Saved(macro, true), before);
    Redo().Revert();
    EXPECT_EQ(Saved(macro, true), after);
  }
  EXPECT_TRUE(macro.GetAlternating());
}

TEST_F(TCommandTest, FilesComeOutAsTheGoldenOnesAndReadBackTheSame) {
  DisableUndo();
  TCommandObjectList list;
  FillSample(list);
  const struct {
    const char* File;
    QByteArray Saved;
  } files[] = {
      {"rs232_command.xml", SavedCommand(*list.GetCommand(0))},
      {"ip_command.xml", SavedCommand(*list.GetCommand(1))},
      {"ir_stream.xml", SavedCommand(*list.GetCommand(3))},
      {"indexed_list.xml", Saved(list, true)},
  };
  for (const auto& file : files) EXPECT_EQ(file.Saved, Golden(file.File)) << file.File;

  TCommandObjectList read;
  Load(read, Golden("indexed_list.xml"), true);
  ASSERT_EQ(read.GetCommandCount(), 3);  // the empty command was not written
  for (int i = 0; i < 3; ++i) {
    const TCommandObject* original = list.GetCommand(i == 2 ? 3 : i);
    EXPECT_TRUE(read.GetCommand(i)->Match(original)) << i;
    EXPECT_EQ(read.GetCommand(i)->GetButtonClasses(), original->GetButtonClasses());
    EXPECT_EQ(read.GetCommand(i)->GetGUID(), original->GetGUID());
  }
  EXPECT_EQ(read.GetIRStreamCount(), 1);
  EXPECT_EQ(read.GetIRStream(0), read.GetCommand(2));
  EXPECT_EQ(read.GetIRStream(1), nullptr);
  EXPECT_EQ(static_cast<TIRStream*>(read.GetCommand(2))->GetRepeats(), 2);
  EXPECT_EQ(Saved(read, false), Saved(list, false));
}

TEST_F(TCommandTest, ReadingAListIsUndoneAsAChangeOfTheListAlone) {
  TModelStandIn model;
  TCommandObjectList& list = model.mCommands;
  AddSerial(list, "Lamp off", "2A4C4F46");
  MaintainUndo();
  const QByteArray before = Saved(list, false);
  const int recordedBefore = Undo().Count();
  Load(list, Golden("indexed_list.xml"), true);
  MaintainUndo();
  // The removal and the three additions, and none of the values read into the new commands,
  // which never held anything else.
  EXPECT_EQ(Undo().Count() - recordedBefore, 4);
  const QByteArray after = Saved(list, false);
  Undo().Revert();
  EXPECT_EQ(Saved(list, false), before);
  Redo().Revert();
  EXPECT_EQ(Saved(list, false), after);
}

TEST_F(TCommandTest, BadFilesFailOrFollowTheIndexRuleAndNeverHalfLoad) {
  DisableUndo();
  TCommandObjectList list;
  FillSample(list);
  const QByteArray before = Saved(list, false);
  const struct {
    const char* Xml;
    const char* Failure;
  } failures[] = {
      {"<c><rs232_command name=\"a\"><data>01</data></rs232_command>"
       "<rs232_command name=\"b\"><stopbits>stop_bits_3</stopbits></rs232_command></c>",
       "'stop_bits_3' is not a valid TNumStopbits value"},
      {"<c><ip_command name=\"a\"><binary>yes</binary></ip_command></c>",
       "'yes' is not a valid boolean value"},
      {"<c><ip_command name=\"a\" guid=\"{nonsense}\"/></c>",
       "'{nonsense}' is not a valid GUID value"},
  };
  for (const auto& c : failures) {
    EXPECT_EQ(FailureOf([&] { Load(list, c.Xml, false); }), c.Failure);
    EXPECT_EQ(Saved(list, false), before) << c.Xml;
  }

  // Indexes: "6" is not below the 6 child nodes, "x" is none; duplicates keep document order.
  Load(list,
       "<c><rs232_command index=\"1\" name=\"second\"><data>02</data></rs232_command>"
       "<rs232_command index=\"6\" name=\"beyond\"><data>03</data></rs232_command>"
       "<rs232_command index=\"0\" name=\"first\"><data>01</data></rs232_command>"
       "<rs232_command index=\"1\" name=\"second too\"><data>04</data></rs232_command>"
       "<rs232_command index=\"x\" name=\"none\"><data>05</data></rs232_command>"
       "<other index=\"0\"/></c>",
       true);
  QStringList names;
  for (int i = 0; i < list.GetCommandCount(); ++i) names << list.GetCommand(i)->GetName();
  EXPECT_EQ(names, (QStringList{"first", "second", "second too"}));
  EXPECT_EQ(static_cast<TRS232Command*>(list.GetCommand(0))->GetBaudRate(), 9600);
}

TEST_F(TCommandTest, CommandsTakeTheirClassesAndCategoriesAsTheirSetsGiveThem) {
  TModelStandIn model;
  auto* stream =
      static_cast<TIRStream*>(model.mCommands.AddNewCommandObject(&TIRStream::staticMetaObject));
  EXPECT_EQ(stream->GetCategory(), "Projector - X1");
  const int recorded = Undo().Count();
  stream->SetCategory("Projector - X1");  // the model's category: nothing stored
  EXPECT_EQ(Undo().Count(), recorded);
  // A category of its own, undone, gives the command back its model's, renamed or not.
  stream->SetCategory("Amplifier");
  MaintainUndo();
  Undo().Revert();
  model.mCategory = QStringLiteral("Projector - X2");
  EXPECT_EQ(stream->GetCategory(), "Projector - X2");
  MaintainUndo();
  Redo().Revert();
  EXPECT_EQ(stream->GetCategory(), "Amplifier");
  MaintainUndo();
  Undo().Revert();
  model.mCategory = QStringLiteral("Projector - X1");

  const struct {
    const char* Name;
    TButtonClass Held;
    TButtonClasses Expected;
  } cases[] = {
      {"Vol+", {}, {{SystemClassGroup, ButtonClass_VolumeUp}}},
      {"Enter", {NumericClassGroup, ButtonClass_Enter1}, {{NumericClassGroup, ButtonClass_Enter1}}},
      {"Mute", {NorvaClassGroup, 2}, {{NorvaClassGroup, 2}}},  // equivalent to System Mute
      {"OK", {NumericClassGroup, ButtonClass_Enter1}, {{NumericClassGroup, ButtonClass_Enter1}}},
      {"cool-auto-18C", {}, {}},
  };
  for (const auto& c : cases) {
    stream->SetName(c.Name);
    stream->SetButtonClasses(c.Held.IsNone() ? TButtonClasses{} : TButtonClasses{c.Held});
    stream->AutoAssignButtonClass();
    EXPECT_EQ(stream->GetButtonClasses(), c.Expected) << c.Name;
  }

  // A copy keeps identity, classes and the learnt flag; a macro alternates only between two.
  stream->SetLearnt(true);
  stream->UpdateGUID();
  TIRMacro macro;
  TCommandObject* copy = macro.AddNewCommandObject(stream);
  EXPECT_EQ(copy->GetGUID(), stream->GetGUID());
  EXPECT_TRUE(copy->GetLearnt());
  EXPECT_EQ(copy->GetCategory(), "Projector - X1");
  macro.AddNewCommandObject(stream);
  macro.AddNewCommandObject(stream);
  macro.SetAlternating(true);
  EXPECT_FALSE(macro.GetAlternating());
  // A command set that is itself the category owner, as a model of the IR database is.
  TModelList modelList;
  EXPECT_EQ(modelList.AddNewCommandObject(&TIPCommand::staticMetaObject)->GetCategory(),
            "Amplifier - A9");

  auto reference = TCommandObjectList::CreateReferenceList(nullptr);
  reference->AddCommandObject(copy);
  EXPECT_THROW(reference->AddNewCommandObject(&TIRStream::staticMetaObject), ENorvaError);
  reference.reset();
  EXPECT_EQ(macro.GetCommand(0), copy);  // the reference list destroyed nothing
}
