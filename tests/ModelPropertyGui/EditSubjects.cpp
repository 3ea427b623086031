#include "EditSubjects.h"

#include <KeypadDevice/WallKeypad.h>
#include "EditValues.h"
#include "PlacedPicture.h"
#include "PropertyEdits.h"

#include <IR/IR.h>
#include <IR_Database/IR_Database.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/OrbClassRegistry.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlDocument.h>

#include <QColor>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <stdexcept>

namespace norva::edits {

namespace {

using TEdit = std::function<QString()>;

// Runs one of the edits; an edit that finds nothing to work on (an empty list) falls back on the
// first, which always can.
QString OneOf(TEditChoices& choices, const std::vector<TEdit>& edits) {
  QString done = edits.at(choices.Below(static_cast<unsigned>(edits.size())))();
  return done.isEmpty() ? edits.front()() : done;
}

// Adds deleting one of `count` children, and moving one to another place; `child` gives the one
// at an index.
template <typename Child>
void AddDeleteAndMoveEdits(std::vector<TEdit>& edits, int count, Child child, const char* noun,
                           TEditChoices& choices) {
  const auto some = [count, &choices] {
    return static_cast<int>(choices.Below(static_cast<unsigned>(count)));
  };
  edits.emplace_back([=] {
    if (count == 0) return QString();
    const int index = some();
    child(index)->Delete();
    return QStringLiteral("deleted %1 %2").arg(QLatin1String(noun)).arg(index);
  });
  edits.emplace_back([=] {
    if (count == 0) return QString();
    const int from = some();
    const int to = some();
    child(from)->Move(to);
    return QStringLiteral("moved %1 %2 to %3").arg(QLatin1String(noun)).arg(from).arg(to);
  });
}

QByteArray SavedDocument(const char* root, const std::function<void(pugi::xml_node)>& save) {
  pugi::xml_document document;
  save(StartXMLDocument(document, root));
  return SaveXMLDocument(document);
}

// Edits of objects made only to be assigned from record nothing.
template <typename T, typename Fill>
std::unique_ptr<T> Filled(std::unique_ptr<T> object, Fill fill) {
  const TUndoSuspended undoOff;
  fill(*object);
  return object;
}

// ---- Commands

const QList<TOrbObjectClass>& CommandClasses() {
  static const QList<TOrbObjectClass> classes = {
      &TIRStream::staticMetaObject, &TNorvaIRStream::staticMetaObject,
      &TRS232Command::staticMetaObject, &TIPCommand::staticMetaObject};
  return classes;
}

// Content of its own, through edits that need no other command (so filling never recurses); says
// which properties it wrote.
QString FillCommand(TCommandObject& command, TEditChoices& choices) {
  if (auto* stream = qobject_cast<TIRStream*>(&command))
    stream->SetHexCode(HexCodeValue(choices));
  else
    static_cast<TDataCommand&>(command).SetDataString(HexDigitsValue(choices) + "0D");
  QStringList written;
  for (int count = choices.Between(0, 3); count > 0; --count)
    written.append(EditProperty(command, choices).section(u'.', 1));
  command.SetButtonClasses(ButtonClassesValue(choices));
  return written.join(QStringLiteral(", "));
}

std::unique_ptr<TCommandObject> NewCommand(TOrbObjectClass cls, TEditChoices& choices) {
  return Filled(std::unique_ptr<TCommandObject>(
                    static_cast<TCommandObject*>(ConstructOrbObject(cls, nullptr))),
                [&](TCommandObject& command) { FillCommand(command, choices); });
}

QString EditStream(TIRStream& stream, TEditChoices& choices) {
  auto* native = qobject_cast<TNorvaIRStream*>(&stream);
  std::vector<TEdit> edits = {
      [&] {
        const QString code = HexCodeValue(choices);
        stream.SetHexCode(code);
        return QStringLiteral("SetHexCode('%1')").arg(code);
      },
      [&] {
        double carrier = 0;
        const QList<double> signal = RawSignalValue(choices, carrier);
        stream.SetRawSignal(carrier, signal);
        return QStringLiteral("SetRawSignal(%1 Hz, %2 times)").arg(carrier).arg(signal.size());
      },
      [&] {
        const double hertz = choices.Pick(QList<double>{0, 36000, 38000, 455000});
        stream.SetModulationFrequency(hertz);
        return QStringLiteral("SetModulationFrequency(%1)").arg(hertz);
      },
      [&] {
        const auto source = NewCommand(&TIRStream::staticMetaObject, choices);
        stream.SetData(static_cast<const TIRStream&>(*source).Data());
        return QStringLiteral("SetData(pairs %1)")
            .arg(static_cast<const TIRStream&>(*source).GetPeriodIDPairsString());
      },
  };
  if (native) {
    edits.emplace_back([&, native] {
      const int zone = choices.Between(-1, 95);
      const auto command = static_cast<TNorvaCommand>(choices.Between(nvStandbyCmd, nvAlarmSleep));
      const auto type =
          static_cast<TNorvaCommandType>(choices.Between(AmpCommand, VideoSwitcherCommand));
      native->SetNorva(zone, command, type);
      return QStringLiteral("SetNorva(%1, %2, %3)")
          .arg(zone)
          .arg(static_cast<int>(command))
          .arg(static_cast<int>(type));
    });
    edits.emplace_back([&, native] {
      const int zone = choices.Between(0, 15);
      const auto command = static_cast<TSw6Cmd>(choices.Between(FirstSw6Cmd, LastSw6Cmd));
      native->SetNorvaSw6(zone, command);
      return QStringLiteral("SetNorvaSw6(%1, %2)").arg(zone).arg(static_cast<int>(command));
    });
    edits.emplace_back([&, native] {
      const auto a = static_cast<std::uint8_t>(choices.Below(256));
      const auto b = static_cast<std::uint8_t>(choices.Below(256));
      native->SetNorvaCodeOld(a, b);
      return QStringLiteral("SetNorvaCodeOld(%1, %2)").arg(int{a}).arg(int{b});
    });
  }
  return OneOf(choices, edits);
}

QString EditCommand(TCommandObject& command, TEditChoices& choices) {
  const QString what = command.GetClassName() + QStringLiteral(" '") + command.GetName() + "': ";
  const std::vector<TEdit> edits = {
      [&] { return EditProperty(command, choices); },
      [&] {
        const TButtonClass added = ButtonClassValue(choices);
        command.AddButtonClass(added);
        return QStringLiteral("AddButtonClass(%1)").arg(ButtonClassText(added));
      },
      [&] {
        const TButtonClasses classes = ButtonClassesValue(choices);
        command.SetButtonClasses(classes);
        return QStringLiteral("SetButtonClasses(%1 classes)").arg(classes.size());
      },
      [&] {
        command.AutoAssignButtonClass();
        return QStringLiteral("AutoAssignButtonClass");
      },
      [&] {
        const auto source = NewCommand(command.GetClass(), choices);
        source->AssignTo(&command);
        return QStringLiteral("assigned from a %1 '%2'")
            .arg(source->GetClassName(), source->GetName());
      },
      [&] {
        auto* stream = qobject_cast<TIRStream*>(&command);
        return stream ? EditStream(*stream, choices) : EditProperty(command, choices);
      },
  };
  return what + OneOf(choices, edits);
}

// ---- Lists, macros and models

QString EditList(TCommandObjectList& list, TEditChoices& choices);

void FillList(TCommandObjectList& list, TEditChoices& choices) {
  for (int count = choices.Between(0, 4); count > 0; --count)
    FillCommand(*list.AddNewCommandObject(choices.Pick(CommandClasses())), choices);
  if (choices.Percent(30)) list.SetName(TextValue(choices));
}

std::unique_ptr<TCommandObjectList> NewList(TOrbObjectClass cls, TEditChoices& choices) {
  return Filled(std::unique_ptr<TCommandObjectList>(
                    static_cast<TCommandObjectList*>(ConstructOrbObject(cls, nullptr))),
                [&](TCommandObjectList& list) { FillList(list, choices); });
}

QByteArray SavedList(const TCommandObjectList& list, bool indexed) {
  return SavedDocument("commands", [&](pugi::xml_node root) { list.Save(root, indexed); });
}

QString EditList(TCommandObjectList& list, TEditChoices& choices) {
  const int count = list.GetCommandCount();
  const auto some = [&] { return static_cast<int>(choices.Below(static_cast<unsigned>(count))); };
  std::vector<TEdit> edits = {
      [&] {
        const TOrbObjectClass cls = choices.Pick(CommandClasses());
        TCommandObject* command = list.AddNewCommandObject(cls);
        const QString written = FillCommand(*command, choices);
        const int at = choices.Between(0, count);
        command->Move(at);
        return QStringLiteral("inserted a %1 at %2, filled (%3)")
            .arg(ClassNameOf(cls))
            .arg(at)
            .arg(written);
      },
      [&] {
        if (count == 0) return QString();
        const int index = some();
        list.AddNewCommandObject(list.GetCommand(index));
        return QStringLiteral("added a copy of command %1").arg(index);
      },
      [&] {
        list.Clear();
        return QStringLiteral("cleared");
      },
      [&] {
        if (count == 0) return QString();
        const int index = some();
        return QStringLiteral("command %1 ").arg(index) +
               EditCommand(*list.GetCommand(index), choices);
      },
      [&] {
        const auto source = NewList(list.GetClass(), choices);
        source->AssignTo(&list);
        return QStringLiteral("assigned from a list of %1").arg(source->GetCommandCount());
      },
      [&] {
        const bool indexed = choices.Percent(50);
        const auto source = NewList(list.GetClass(), choices);
        pugi::xml_document document;
        LoadXMLDocument(document, SavedList(*source, indexed));
        list.Load(document.document_element(), indexed);
        return QStringLiteral("loaded a list of %1%2")
            .arg(source->GetCommandCount())
            .arg(indexed ? QStringLiteral(", indexed") : QString());
      },
      [&] { return EditProperty(list, choices); },
  };
  AddDeleteAndMoveEdits(
      edits, count, [&list](int index) { return list.GetCommand(index); }, "command", choices);
  return OneOf(choices, edits);
}

// ---- Makes and databases

QString EditMake(TMake& make, TEditChoices& choices);

void FillMake(TMake& make, TEditChoices& choices) {
  make.SetName(TextValue(choices));
  for (int count = choices.Between(0, 3); count > 0; --count) {
    TModel* model = make.AddNewModel();
    model->SetName(TextValue(choices));
    FillList(*model, choices);
  }
}

QString EditMake(TMake& make, TEditChoices& choices) {
  const int count = make.GetModelCount();
  const auto some = [&] { return static_cast<int>(choices.Below(static_cast<unsigned>(count))); };
  const QString what = QStringLiteral("make '%1': ").arg(make.GetName());
  std::vector<TEdit> edits = {
      [&] {
        TModel* model = make.AddNewModel();
        model->SetName(TextValue(choices));
        FillList(*model, choices);
        return QStringLiteral("added model '%1' of %2 commands")
            .arg(model->GetName())
            .arg(model->GetCommandCount());
      },
      [&] {
        if (count == 0) return QString();
        const int index = some();
        return QStringLiteral("model %1: ").arg(index) + EditList(*make.GetModel(index), choices);
      },
      [&] {
        make.Clear();
        return QStringLiteral("cleared");
      },
      [&] {
        const auto source =
            Filled(std::make_unique<TMake>(), [&](TMake& filled) { FillMake(filled, choices); });
        source->AssignTo(&make);
        return QStringLiteral("assigned from make '%1'").arg(source->GetName());
      },
      [&] {
        const auto source =
            Filled(std::make_unique<TMake>(), [&](TMake& filled) { FillMake(filled, choices); });
        pugi::xml_document document;
        LoadXMLDocument(document, SavedDocument("ir_database",
                                                [&](pugi::xml_node root) { source->Save(root); }));
        make.Load(document.document_element().child("make"));
        return QStringLiteral("loaded the %1 models of a make").arg(source->GetModelCount());
      },
      [&] { return EditProperty(make, choices); },
  };
  AddDeleteAndMoveEdits(
      edits, count, [&make](int index) { return make.GetModel(index); }, "model", choices);
  return what + OneOf(choices, edits);
}

void FillDatabase(TIRDB& database, TEditChoices& choices) {
  for (int count = choices.Between(0, 3); count > 0; --count)
    FillMake(*database.AddNewMake(), choices);
}

QString EditDatabase(TIRDB& database, TEditChoices& choices) {
  const int count = database.GetMakeCount();
  const auto some = [&] { return static_cast<int>(choices.Below(static_cast<unsigned>(count))); };
  std::vector<TEdit> edits = {
      [&] {
        TMake* make = database.AddNewMake();
        FillMake(*make, choices);
        return QStringLiteral("added make '%1'").arg(make->GetName());
      },
      [&] {
        const QString makeName = TextValue(choices);
        const QString modelName = TextValue(choices);
        TModel* model = database.GetOrAddModel(makeName, modelName);
        if (model) FillList(*model, choices);
        return QStringLiteral("GetOrAddModel('%1', '%2') and filled it").arg(makeName, modelName);
      },
      [&] {
        if (count == 0) return QString();
        return EditMake(*database.GetMake(some()), choices);
      },
      [&] {
        database.Clear();
        return QStringLiteral("cleared");
      },
      [&] {
        const auto source = Filled(std::make_unique<TIRDB>(QString(), false),
                                   [&](TIRDB& filled) { FillDatabase(filled, choices); });
        source->AssignTo(&database);
        return QStringLiteral("assigned from a database of %1 makes").arg(source->GetMakeCount());
      },
      [&] { return EditProperty(database, choices); },
  };
  AddDeleteAndMoveEdits(
      edits, count, [&database](int index) { return database.GetMake(index); }, "make", choices);
  return OneOf(choices, edits);
}

// ---- Keypads and pictures

// Through edits that need no other keypad (so filling never recurses).
void FillKeypad(norva::TWallKeypad& keypad, TEditChoices& choices) {
  for (int count = choices.Between(1, 8); count > 0; --count) {
    norva::TWallKeypadButton& button =
        keypad.Button(choices.Between(0, norva::TWallKeypad::ButtonCount - 1));
    if (choices.Percent(30))
      button.SetButtonClass(ButtonClassValue(choices));
    else
      EditProperty(choices.Percent(20) ? static_cast<TOrbObject&>(keypad) : button, choices);
  }
}

QString EditKeypad(norva::TWallKeypad& keypad, TEditChoices& choices) {
  const auto some = [&] { return choices.Between(0, norva::TWallKeypad::ButtonCount - 1); };
  const auto button = [&]() -> norva::TWallKeypadButton& { return keypad.Button(some()); };
  const auto otherKeypad = [&] {
    return Filled(std::make_unique<norva::TWallKeypad>(),
                  [&](norva::TWallKeypad& filled) { FillKeypad(filled, choices); });
  };
  const std::vector<TEdit> edits = {
      [&] { return EditProperty(keypad, choices); },
      [&] {
        const int index = some();
        return QStringLiteral("button %1: ").arg(index) +
               EditProperty(keypad.Button(index), choices);
      },
      [&] {
        norva::TWallKeypadButton& edited = button();
        const TButtonClass buttonClass = ButtonClassValue(choices);
        edited.SetButtonClass(buttonClass);
        if (!(edited.GetButtonClass() == buttonClass)) {
          throw std::logic_error(
              QStringLiteral("a button given %1 kept %2")
                  .arg(ButtonClassText(buttonClass), ButtonClassText(edited.GetButtonClass()))
                  .toStdString());
        }
        return QStringLiteral("button '%1': SetButtonClass(%2)")
            .arg(edited.GetCaption(), ButtonClassText(buttonClass));
      },
      [&] {
        norva::TWallKeypadButton& to = button();
        const norva::TWallKeypadButton& from = button();
        to.CopyFrom(from);
        return QStringLiteral("button '%1' copied from '%2'")
            .arg(to.GetCaption(), from.GetCaption());
      },
      [&] {
        button().Blank();
        return QStringLiteral("a button blanked");
      },
      [&] {
        const auto source = otherKeypad();
        source->Button(0).AssignTo(&button());
        return QStringLiteral("a button assigned from a button of another keypad");
      },
      [&] {
        const auto source = otherKeypad();
        keypad.AssignContents(*source);
        return QStringLiteral("AssignContents from another keypad");
      },
      [&] {
        const auto source = otherKeypad();
        keypad.ExternalInstanceChange(source.get());
        return QStringLiteral("ExternalInstanceChange from another keypad");
      },
      [&] {
        keypad.Purge();
        return QStringLiteral("Purge");
      },
  };
  return OneOf(choices, edits);
}

// A picture of a class the files store, drawn in a few colours.
QByteArray PictureValue(TEditChoices& choices) {
  QImage image(choices.Between(1, 24), choices.Between(1, 24), QImage::Format_ARGB32);
  image.fill(QColor::fromRgb(static_cast<QRgb>(choices.Below(0x1000000))));
  for (int dots = choices.Between(0, 6); dots > 0; --dots) {
    image.setPixel(choices.Between(0, image.width() - 1), choices.Between(0, image.height() - 1),
                   static_cast<QRgb>(choices.Below(0x1000000)) | 0xFF000000u);
  }
  const TGraphic graphic(
      choices.Pick(QList<TGraphicClass>{TGraphicClass::Bitmap, TGraphicClass::PNG,
                                        TGraphicClass::JPEG, TGraphicClass::GIF}),
      image);
  TGraphicContainer container;
  container.SetGraphic(&graphic);
  return container.GetDataString();
}

QString EditPicture(TPlacedPicture& picture, TEditChoices& choices) {
  const std::vector<TEdit> edits = {
      [&] { return EditProperty(picture, choices); },
      [&] {
        const QByteArray data = PictureValue(choices);
        picture.SetPicture(data);
        return QStringLiteral("SetPicture(%1...)").arg(QString::fromLatin1(data.left(16)));
      },
      [&] {
        picture.SetPicture(QByteArray());
        return QStringLiteral("SetPicture('')");
      },
      [&] {
        picture.Decode();
        return QStringLiteral("decoded");
      },
      [&] {
        picture.Dormant();
        return QStringLiteral("dormant");
      },
      [&] {
        const auto source = Filled(std::make_unique<TPlacedPicture>(), [&](TPlacedPicture& filled) {
          filled.SetPicture(PictureValue(choices));
          filled.SetTransparent(choices.Percent(50));
        });
        source->AssignTo(&picture);
        return QStringLiteral("assigned from another picture");
      },
  };
  return OneOf(choices, edits);
}

// ---- Subjects

// What is edited, owned by its root, with how to write and edit it. Parts of a document record
// their changes only inside one, so the root of a part gets a document standing in for the one it
// would live in.
class TObjectSubject : public TEditSubject {
 public:
  TObjectSubject(std::unique_ptr<TOrbObject> document, std::unique_ptr<TOrbObject> root,
                 std::function<QByteArray()> save, std::function<QString(TEditChoices&)> edit,
                 TIRDB* database = nullptr)
      : mDocument(std::move(document)),
        mRoot(std::move(root)),
        mSave(std::move(save)),
        mEdit(std::move(edit)),
        mDatabase(database) {}
  QByteArray Saved() const override { return mSave(); }
  QString Edit(TEditChoices& choices) override { return mEdit(choices); }
  TIRDB* Database() const override { return mDatabase; }

 private:
  std::unique_ptr<TOrbObject> mDocument;
  std::unique_ptr<TOrbObject> mRoot;
  std::function<QByteArray()> mSave;
  std::function<QString(TEditChoices&)> mEdit;
  TIRDB* mDatabase;
};

std::unique_ptr<TEditSubject> CommandSubject(TOrbObjectClass cls, TEditChoices& choices) {
  auto document = std::make_unique<TOrbObject>();
  auto command = std::unique_ptr<TCommandObject>(
      static_cast<TCommandObject*>(ConstructOrbObject(cls, document.get())));
  FillCommand(*command, choices);
  TCommandObject* edited = command.get();
  return std::make_unique<TObjectSubject>(
      std::move(document), std::move(command),
      [edited] {
        return SavedDocument(CommandElementName(edited->GetClass()),
                             [&](pugi::xml_node root) { edited->Save(root); });
      },
      [edited](TEditChoices& next) { return EditCommand(*edited, next); });
}

std::unique_ptr<TEditSubject> ListSubject(TOrbObjectClass cls, TEditChoices& choices) {
  auto document = std::make_unique<TOrbObject>();
  auto list = std::unique_ptr<TCommandObjectList>(
      static_cast<TCommandObjectList*>(ConstructOrbObject(cls, document.get())));
  FillList(*list, choices);
  TCommandObjectList* edited = list.get();
  return std::make_unique<TObjectSubject>(
      std::move(document), std::move(list), [edited] { return SavedList(*edited, true); },
      [edited](TEditChoices& next) { return EditList(*edited, next); });
}

std::unique_ptr<TEditSubject> ModelSubject(TEditChoices& choices) {
  auto document = std::make_unique<TOrbObject>();
  auto make = std::make_unique<TMake>(document.get());
  make->SetName(TextValue(choices));
  TModel* model = make->AddNewModel();
  model->SetName(TextValue(choices));
  FillList(*model, choices);
  return std::make_unique<TObjectSubject>(
      std::move(document), std::move(make),
      [model] {
        return SavedDocument("make", [&](pugi::xml_node root) { model->SaveModel(root); });
      },
      [model](TEditChoices& next) { return EditList(*model, next); });
}

std::unique_ptr<TEditSubject> MakeSubject(TEditChoices& choices) {
  auto document = std::make_unique<TOrbObject>();
  auto make = std::make_unique<TMake>(document.get());
  FillMake(*make, choices);
  TMake* edited = make.get();
  return std::make_unique<TObjectSubject>(
      std::move(document), std::move(make),
      [edited] {
        return SavedDocument("ir_database", [&](pugi::xml_node root) { edited->Save(root); });
      },
      [edited](TEditChoices& next) { return EditMake(*edited, next); });
}

// The database as its file holds it.
QByteArray SavedDatabase(const TIRDB& database) {
  return SavedDocument("ir_database", [&](pugi::xml_node root) {
    for (int i = 0; i < database.GetMakeCount(); ++i) database.GetMake(i)->Save(root);
  });
}

// Filled with undo off and written as a plain file (the database's own saving is no part of
// editing), then opened as the application opens its database.
std::unique_ptr<TEditSubject> DatabaseSubject(TEditChoices& choices) {
  static QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("IR.xml"));
  const auto written = Filled(std::make_unique<TIRDB>(QString(), false),
                              [&](TIRDB& filled) { FillDatabase(filled, choices); });
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(SavedDatabase(*written)) < 0)
    throw std::runtime_error("cannot write the database to open");
  file.close();
  auto database = std::make_unique<TIRDB>(path, false);
  TIRDB* edited = database.get();
  return std::make_unique<TObjectSubject>(
      nullptr, std::move(database), [edited] { return SavedDatabase(*edited); },
      [edited](TEditChoices& next) { return EditDatabase(*edited, next); }, edited);
}

std::unique_ptr<TEditSubject> KeypadSubject(TEditChoices& choices) {
  auto keypad = std::make_unique<norva::TWallKeypad>();
  FillKeypad(*keypad, choices);
  norva::TWallKeypad* edited = keypad.get();
  return std::make_unique<TObjectSubject>(
      nullptr, std::move(keypad),
      [edited] {
        return SavedDocument("keypad_configuration",
                             [&](pugi::xml_node root) { edited->SaveContents(root); });
      },
      [edited](TEditChoices& next) { return EditKeypad(*edited, next); });
}

std::unique_ptr<TEditSubject> PictureSubject(TEditChoices& choices) {
  auto document = std::make_unique<TOrbObject>();
  auto picture = std::make_unique<TPlacedPicture>(document.get());
  picture->SetPicture(PictureValue(choices));
  TPlacedPicture* edited = picture.get();
  return std::make_unique<TObjectSubject>(
      std::move(document), std::move(picture),
      [edited] {
        return SavedDocument("keypad_configuration",
                             [&](pugi::xml_node root) { edited->Save(root); });
      },
      [edited](TEditChoices& next) { return EditPicture(*edited, next); });
}

TSubjectKind Kind(TOrbObjectClass cls,
                  std::function<std::unique_ptr<TEditSubject>(TEditChoices&)> create) {
  return {cls, std::move(create)};
}

}  // namespace

const std::vector<TSubjectKind>& SubjectKinds() {
  static const std::vector<TSubjectKind> kinds = [] {
    std::vector<TSubjectKind> all;
    for (const TOrbObjectClass cls : CommandClasses())
      all.push_back(Kind(cls, [cls](TEditChoices& c) { return CommandSubject(cls, c); }));
    for (const TOrbObjectClass cls :
         {&TCommandObjectList::staticMetaObject, &TIRMacro::staticMetaObject})
      all.push_back(Kind(cls, [cls](TEditChoices& c) { return ListSubject(cls, c); }));
    all.push_back(Kind(&TModel::staticMetaObject, ModelSubject));
    all.push_back(Kind(&TMake::staticMetaObject, MakeSubject));
    all.push_back({&TIRDB::staticMetaObject, DatabaseSubject, true});
    all.push_back(Kind(&norva::TWallKeypad::staticMetaObject, KeypadSubject));
    all.push_back(Kind(&TPlacedPicture::staticMetaObject, PictureSubject));
    return all;
  }();
  return kinds;
}

const TSubjectKind* SubjectKindOf(TOrbObjectClass cls) {
  for (const TSubjectKind& kind : SubjectKinds())
    if (kind.Class == cls) return &kind;
  return nullptr;
}

const QStringList& RegisterModelClasses() {
  static const QStringList refused = [] {
    QStringList reasons;
    RegisterCommandClasses();
    for (const TOrbObjectClass cls :
         {&norva::TWallKeypad::staticMetaObject, &TPlacedPicture::staticMetaObject}) {
      try {
        RegisterOrbObjectClass(cls);
      } catch (const ENorvaError& error) {
        reasons.append(error.Message());
      }
    }
    return reasons;
  }();
  return refused;
}

}  // namespace norva::edits
