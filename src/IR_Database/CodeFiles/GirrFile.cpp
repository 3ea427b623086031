#include <IR_Database/CodeFiles/GirrFile.h>

#include <IR/IRHexCode.h>
#include <IR/IRRawSignal.h>
#include <IR_Database/CodeFiles/EntryReading.h>
#include <OrbGlobal/Xml/XmlDocument.h>
#include <OrbGlobal/Xml/XmlErrors.h>

#include <string>
#include <string_view>

namespace norva {

namespace {

// Deeper nesting than any real file has is refused rather than walked, so that a hostile file
// cannot exhaust the stack.
constexpr int MaxDepth = 32;
// Girr's frequency when a raw form names none.
constexpr double DefaultFrequencyHz = 38000;
// What is looked at to recognise the format: enough for a declaration and a comment or two.
constexpr qsizetype RecognisedPrefix = 4096;

// Girr documents may use a namespace prefix: elements are known by their local name.
std::string_view LocalName(const char* name) {
  const std::string_view full(name);
  const std::size_t colon = full.rfind(':');
  return colon == std::string_view::npos ? full : full.substr(colon + 1);
}

std::string_view LocalName(pugi::xml_node node) { return LocalName(node.name()); }

QString Attribute(pugi::xml_node node, const char* name) {
  return QString::fromUtf8(node.attribute(name).value()).trimmed();
}

pugi::xml_node Child(pugi::xml_node node, std::string_view name) {
  for (pugi::xml_node child : node.children())
    if (LocalName(child) == name) return child;
  return {};
}

// Protocol and parameters, as a command set hands them down and a command completes them.
struct TGirrParameters {
  QString Protocol;
  TIRProtocolParameters Values;
};

std::optional<std::int64_t>& Slot(TIRProtocolParameters& parameters, const QString& name) {
  if (name == u"D") return parameters.D;
  if (name == u"S") return parameters.S;
  if (name == u"F") return parameters.F;
  if (name == u"T") return parameters.T;
  throw ENorvaError(
      QStringLiteral("parameter '%1' is not one of D, S, F and T").arg(name.left(40)));
}

void AddParameters(TGirrParameters& parameters, pugi::xml_node element) {
  if (!element) return;
  const QString protocol = Attribute(element, "protocol");
  if (!protocol.isEmpty()) parameters.Protocol = protocol;
  for (pugi::xml_node parameter : element.children()) {
    if (LocalName(parameter) != "parameter") continue;
    const QString name = Attribute(parameter, "name").toUpper();
    Slot(parameters.Values, name) = WholeNumber(Attribute(parameter, "value"), name);
  }
}

// The durations of a sequence, in either of Girr's forms: "+9024 -4512 ..." or one "flash" and
// "gap" element each; they alternate, starting with a flash.
QList<double> Durations(pugi::xml_node sequence) {
  QList<double> durations;
  auto add = [&](QStringView text, bool flash) {
    if (flash != (durations.size() % 2 == 0))
      throw ENorvaError(QStringLiteral("flashes and gaps do not alternate"));
    durations.append(DecimalNumber(text, u"a duration"));
  };
  for (pugi::xml_node child : sequence.children()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
      for (const QString& token :
           QString::fromUtf8(child.value()).simplified().split(u' ', Qt::SkipEmptyParts)) {
        const QStringView value(token);
        if (value.startsWith(u'+') || value.startsWith(u'-'))
          add(value.mid(1), value.startsWith(u'+'));
        else
          add(value, durations.size() % 2 == 0);
      }
    } else if (LocalName(child) == "flash" || LocalName(child) == "gap") {
      add(QString::fromUtf8(child.text().get()).trimmed(), LocalName(child) == "flash");
    }
  }
  return durations;
}

TIRStreamData RawStream(pugi::xml_node raw) {
  if (!Durations(Child(raw, "ending")).isEmpty())
    throw ENorvaError(QStringLiteral("an ending sequence has no place in a stream"));
  const QString frequency = Attribute(raw, "frequency");
  return WordsStream(
      frequency.isEmpty() ? DefaultFrequencyHz : DecimalNumber(frequency, u"the frequency"),
      Durations(Child(raw, "intro")), Durations(Child(raw, "repeat")));
}

TIRStreamData ProntoStream(pugi::xml_node ccf) {
  const QString text = QString::fromUtf8(ccf.text().get()).simplified();
  const std::optional<TIRStreamData> stream = ParseHexCode(text);
  if (!stream) throw ENorvaError(QStringLiteral("fewer than five words in the Pronto hex code"));
  return *stream;
}

struct TRemoteContext {
  QString Make;
  QString Model;
  TGirrParameters Parameters;
};

TCodeFileEntry ReadCommand(pugi::xml_node command, const TRemoteContext& context) {
  TCodeFileEntry entry{Attribute(command, "name"), context.Make, context.Model, {}, {}};
  if (entry.Name.isEmpty()) throw ENorvaError(QStringLiteral("a command without name"));
  if (pugi::xml_node raw = Child(command, "raw")) {
    entry.Code = RawStream(raw);
  } else if (pugi::xml_node ccf = Child(command, "ccf")) {
    entry.Code = ProntoStream(ccf);
  } else if (pugi::xml_node parameters = Child(command, "parameters")) {
    TGirrParameters own = context.Parameters;
    AddParameters(own, parameters);
    if (own.Protocol.isEmpty()) throw ENorvaError(QStringLiteral("parameters without protocol"));
    entry.Code = TProtocolCode{own.Protocol, own.Values};
  } else {
    throw ENorvaError(QStringLiteral("none of raw, ccf and parameters"));
  }
  return entry;
}

class TGirrReader {
 public:
  TCodeFileEntries Read(pugi::xml_node root) {
    Visit(root, {}, 0);
    return mRead;
  }

 private:
  void Visit(pugi::xml_node element, TRemoteContext context, int depth) {
    if (depth > MaxDepth) {
      mRead.Refusals.append({QStringLiteral("element %1").arg(QString::fromUtf8(element.name())),
                             QStringLiteral("nested too deep")});
      return;
    }
    const std::string_view name = LocalName(element);
    if (name == "command") {
      ++mCommands;
      const QString place =
          QStringLiteral("command %1 (%2)").arg(mCommands).arg(Attribute(element, "name"));
      ReadEntry(mRead, place, [&] { return ReadCommand(element, context); });
      return;
    }
    if (name == "remote") {
      context.Make = Attribute(element, "manufacturer");
      context.Model = Attribute(element, "model");
      if (context.Model.isEmpty()) context.Model = Attribute(element, "name");
    } else if (name == "commandSet") {
      try {
        AddParameters(context.Parameters, Child(element, "parameters"));
      } catch (const ENorvaError& error) {
        // Its commands are still read: those that need the parameters are refused then.
        mRead.Refusals.append(
            {QStringLiteral("command set %1").arg(Attribute(element, "name")), error.Message()});
      }
    } else if (name != "remotes") {
      return;
    }
    for (pugi::xml_node child : element.children())
      if (child.type() == pugi::node_element) Visit(child, context, depth + 1);
  }

  TCodeFileEntries mRead;
  int mCommands = 0;
};

}  // namespace

bool IsGirrFile(const QByteArray& bytes) {
  const QByteArray head = bytes.left(RecognisedPrefix);
  for (qsizetype at = head.indexOf('<'); at >= 0; at = head.indexOf('<', at + 1)) {
    const qsizetype start = at + 1;
    if (start >= head.size() || head[start] == '?' || head[start] == '!') continue;
    qsizetype end = start;
    while (end < head.size() && !QChar::isSpace(static_cast<uchar>(head[end])) &&
           head[end] != '>' && head[end] != '/')
      ++end;
    const std::string tag = head.mid(start, end - start).toStdString();
    const std::string_view name = LocalName(tag.c_str());
    return name == "remotes" || name == "remote" || name == "commandSet" || name == "command";
  }
  return false;
}

TCodeFileEntries ReadGirrFile(const QByteArray& bytes, const QString& /*path*/) {
  pugi::xml_document document;
  try {
    LoadXMLDocument(document, bytes);
  } catch (const EXMLParseError& error) {
    TCodeFileEntries refused;
    refused.Refusals.append(
        {QStringLiteral("line %1, position %2").arg(error.Line()).arg(error.Column()),
         error.Reason()});
    return refused;
  }
  return TGirrReader().Read(document.document_element());
}

}  // namespace norva
