#include <IR_Database/CodeExport.h>

#include <IR/IRHexCode.h>
#include <IR/IRStream.h>
#include <IR_Database/Make.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlDocument.h>

#include <QTextStream>

namespace norva {

namespace {

constexpr double FlipperDutyCycle = 0.33;

// A name on one line: control characters become spaces.
QString OneLine(QString name) {
  for (QChar& c : name)
    if (c.category() == QChar::Other_Control) c = u' ';
  return name;
}

// The stream of an IR stream command that a file can hold; raises the reason it cannot.
const TIRStreamData& WritableStream(const TCommandObject& command) {
  const auto* stream = qobject_cast<const TIRStream*>(&command);
  if (!stream) throw ENorvaError(QStringLiteral("not an infra-red stream"));
  if (stream->IsEmpty()) throw ENorvaError(QStringLiteral("an empty stream"));
  if (stream->GetModulationPeriod() == 0)
    throw ENorvaError(QStringLiteral("a stream without carrier, which no file format holds"));
  if (stream->GetEndPos(false) < 0) throw ENorvaError(QStringLiteral("a stream without end"));
  return stream->Data();
}

// The durations of a stream in microseconds, the part sent once followed by the part repeated,
// in the units its hex code counts them.
QList<double> Microseconds(const TIRStreamData& stream) {
  QList<double> durations;
  const int end = stream.GetEndPos(false);
  for (int i = 0; i <= end; ++i) {
    const TPeriodIDPair& pair = stream.Pairs[static_cast<std::size_t>(i)];
    const double offUnit = pair.IsWordEnd() ? WordEndLengthUnit : PeriodLengthUnit;
    durations << stream.Lengths[pair.OnID] * PeriodLengthUnit * 1e6
              << stream.Lengths[pair.OffID] * offUnit * 1e6;
  }
  return durations;
}

// Writes the commands of one model in one format.
class IModelWriter {
 public:
  virtual ~IModelWriter() = default;
  virtual void BeginModel(const TModel& model) = 0;
  virtual void Command(const QString& name, const TIRStreamData& stream) = 0;
  virtual QByteArray Finish() = 0;
};

class TProntoWriter : public IModelWriter {
 public:
  void BeginModel(const TModel&) override {}
  void Command(const QString& name, const TIRStreamData& stream) override {
    mText += OneLine(name) + u'\t' + HexCodeOf(stream) + u'\n';
  }
  QByteArray Finish() override { return mText.toUtf8(); }

 private:
  QString mText;
};

class TGirrWriter : public IModelWriter {
 public:
  TGirrWriter() {
    mRemotes = StartXMLDocument(mDocument, "remotes");
    mRemotes.append_attribute("xmlns").set_value("http://www.harctoolbox.org/Girr");
    mRemotes.append_attribute("girrVersion").set_value("1.0");
  }
  void BeginModel(const TModel& model) override {
    pugi::xml_node remote = AddXMLDOMElement(mRemotes, "remote");
    SetNameAttribute(remote, model.GetFullName());
    const TOrbObject* make = model.GetOwner();
    remote.append_attribute("manufacturer").set_value(make ? Utf8(make->GetName()) : "");
    remote.append_attribute("model").set_value(Utf8(model.GetName()));
    mCommandSet = AddXMLDOMElement(remote, "commandSet");
    SetNameAttribute(mCommandSet, model.GetName());
  }
  void Command(const QString& name, const TIRStreamData& stream) override {
    const QString code = HexCodeOf(stream);
    pugi::xml_node command = AddXMLDOMElement(mCommandSet, "command");
    SetNameAttribute(command, OneLine(name));
    command.append_attribute("master").set_value("ccf");
    AddTextElement(command, "ccf", code);
  }
  QByteArray Finish() override { return SaveXMLDocument(mDocument); }

 private:
  // Kept until the attribute has copied it.
  const char* Utf8(const QString& text) {
    mUtf8 = text.toUtf8();
    return mUtf8.constData();
  }

  pugi::xml_document mDocument;
  pugi::xml_node mRemotes;
  pugi::xml_node mCommandSet;
  QByteArray mUtf8;
};

class TFlipperWriter : public IModelWriter {
 public:
  TFlipperWriter() : mOut(&mText) { mOut << "Filetype: IR signals file\nVersion: 1\n"; }
  void BeginModel(const TModel& model) override {
    mOut << "# " << OneLine(model.GetFullName()) << '\n';
  }
  void Command(const QString& name, const TIRStreamData& stream) override {
    mOut << "#\nname: " << OneLine(name)
         << "\ntype: raw\nfrequency: " << qRound(ModulationClockHz / stream.ModulationPeriod)
         << "\nduty_cycle: " << QString::number(FlipperDutyCycle, 'f', 6) << "\ndata:";
    for (const double duration : Microseconds(stream)) mOut << ' ' << qRound(duration);
    mOut << '\n';
  }
  QByteArray Finish() override {
    mOut.flush();
    return mText.toUtf8();
  }

 private:
  QString mText;
  QTextStream mOut;
};

std::unique_ptr<IModelWriter> WriterOf(TCodeExportFormat format) {
  switch (format) {
    case TCodeExportFormat::Pronto: return std::make_unique<TProntoWriter>();
    case TCodeExportFormat::Girr: return std::make_unique<TGirrWriter>();
    case TCodeExportFormat::Flipper: return std::make_unique<TFlipperWriter>();
  }
  return nullptr;
}

}  // namespace

std::optional<TCodeExportFormat> CodeExportFormatNamed(QStringView name) {
  if (name == u"pronto") return TCodeExportFormat::Pronto;
  if (name == u"girr") return TCodeExportFormat::Girr;
  if (name == u"flipper") return TCodeExportFormat::Flipper;
  return std::nullopt;
}

TCodeExport ExportCodes(const QList<const TModel*>& models, TCodeExportFormat format) {
  TCodeExport exported;
  const std::unique_ptr<IModelWriter> writer = WriterOf(format);
  for (const TModel* model : models) {
    writer->BeginModel(*model);
    for (int i = 0; i < model->GetCommandCount(); ++i) {
      const TCommandObject& command = *model->GetCommand(i);
      try {
        writer->Command(command.GetName(), WritableStream(command));
      } catch (const ENorvaError& error) {
        exported.Unwritten << QStringLiteral("%1: %2: %3")
                                  .arg(model->GetFullName(), command.GetName(), error.Message());
      }
    }
  }
  exported.Bytes = writer->Finish();
  return exported;
}

}  // namespace norva
