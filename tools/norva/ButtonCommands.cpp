// norva button find / list / ordinal: the button-class vocabulary and the name finder.
#include "Subcommands.h"

#include <ButtonClasses/ButtonClasses.h>
#include <NorvaGlobal/EnumNames.h>

namespace norva::cli {

namespace {

enum class TKeypadFamily { None, Wk3, NvZr900 };

// Which keypad numbers a group's classes: the Wk3 keypad its own Norva values and its applets,
// the Zr900 GUI its own values and its applets; generic classes no keypad holds.
TKeypadFamily FamilyOf(TButtonClassGroup group) {
  if (group == NorvaClassGroup || Wk3AppletClassGroups.Contains(group)) return TKeypadFamily::Wk3;
  if (group == NvZr900GUIClassGroup || NvZr900AppletClassGroups.Contains(group))
    return TKeypadFamily::NvZr900;
  return TKeypadFamily::None;
}

QString FamilyWord(TKeypadFamily family) {
  switch (family) {
    case TKeypadFamily::Wk3: return QStringLiteral("wk3");
    case TKeypadFamily::NvZr900: return QStringLiteral("zr900");
    case TKeypadFamily::None: break;
  }
  return QStringLiteral("-");
}

std::uint16_t OrdinalIn(TKeypadFamily family, const TButtonClass& c) {
  return family == TKeypadFamily::NvZr900 ? c.GetOrdValueNvZr900() : c.GetOrdValueWk3();
}

// GROUP by value name (IntegraTunerClassGroup) or number.
TButtonClassGroup ParseGroup(const QString& text) {
  if (const auto byName = EnumFromName<TButtonClassGroup>(text)) return *byName;
  if (!ParseNumber(text))
    throw EUsage(QStringLiteral("unknown button class group %1 (norva button list names them)")
                     .arg(Quoted(text)));
  return static_cast<TButtonClassGroup>(
      ParseInteger(text, 0, ButtonClassGroupCount - 1, QStringLiteral("GROUP")));
}

// The class's group, value name and display name, separated by tabs.
QString Described(const TButtonClass& c) {
  return EnumName(c.Group) + u'\t' + ButtonClassValueName(c.Group, c.ClassID) + u'\t' +
         c.GetShortName();
}

void ListGroups(QTextStream& out) {
  for (int g = 0; g < ButtonClassGroupCount; ++g) {
    const auto group = static_cast<TButtonClassGroup>(g);
    const TOrdinalRange range = ButtonClassGroupOrdinals(group);
    out << g << '\t' << EnumName(group) << '\t' << ButtonClassGroupDisplayName(group) << '\t'
        << FamilyWord(FamilyOf(group));
    if (range.Count() > 0) out << ' ' << range.First << ".." << range.Last;
    out << '\n';
  }
}

void ListClasses(TButtonClassGroup group, QTextStream& out) {
  const TKeypadFamily family = FamilyOf(group);
  if (group == dummy_group_1 || group == dummy_group_2) {
    out << "no classes of its own: its ordinals read as IntegraReceiverClassGroup classes\n";
    return;
  }
  if (group == GenericAppletClassGroup) {
    out << "classes named by the applet's own model class, wk3 ordinals 10000..10099\n";
    return;
  }
  for (int value = 1; value < ButtonClassValueCount(group); ++value) {
    const TButtonClass c(group, static_cast<std::uint8_t>(value));
    out << (family == TKeypadFamily::None ? QStringLiteral("-")
                                          : QString::number(OrdinalIn(family, c)))
        << '\t' << value << '\t' << ButtonClassValueName(group, value) << '\t' << c.GetShortName()
        << '\n';
  }
}

}  // namespace

int RunButtonFind(TArguments& arguments, QTextStream& out) {
  const QStringList names = arguments.Positional();
  if (names.isEmpty()) throw EUsage(QStringLiteral("button find needs at least one NAME"));
  int status = 0;
  for (const QString& name : names) {
    TButtonClass found;
    if (FindButtonClass(name, found)) {
      out << Escaped(name) << '\t' << Described(found) << '\n';
    } else {
      out << Escaped(name) << "\tno class fits\n";
      status = 1;
    }
  }
  return status;
}

int RunButtonList(TArguments& arguments, QTextStream& out) {
  const QStringList values = arguments.Positional();
  if (values.size() > 1) throw EUsage(QStringLiteral("button list takes at most one GROUP"));
  if (values.isEmpty())
    ListGroups(out);
  else
    ListClasses(ParseGroup(values[0]), out);
  return 0;
}

int RunButtonOrdinal(TArguments& arguments, QTextStream& out) {
  const QStringList values = arguments.Positional();
  if (values.size() != 2)
    throw EUsage(QStringLiteral("button ordinal needs wk3|zr900 N, or GROUP VALUE"));
  const QString family = values[0].toLower();
  if (family == QStringLiteral("wk3") || family == QStringLiteral("zr900")) {
    const auto ordinal =
        static_cast<std::uint16_t>(ParseInteger(values[1], 0, 65535, QStringLiteral("N")));
    const TButtonClass c = family == QStringLiteral("wk3")
                               ? TButtonClass::FromOrdValueWk3(ordinal)
                               : TButtonClass::CreateOrdValueNvZr900(ordinal);
    out << (c.IsNone() ? QStringLiteral("none") : Described(c)) << '\n';
    return 0;
  }
  const TButtonClassGroup group = ParseGroup(values[0]);
  const auto value = ButtonClassValueFromName(group, values[1]);
  if (!value)
    throw EUsage(QStringLiteral("%1 has no class value %2 (norva button list %1 names them)")
                     .arg(EnumName(group), Quoted(values[1])));
  const TButtonClass c(group, *value);
  const TKeypadFamily keypad = FamilyOf(group);
  if (keypad == TKeypadFamily::None)
    out << "none: no keypad holds a generic class\n";
  else
    out << FamilyWord(keypad) << ' ' << OrdinalIn(keypad, c) << '\n';
  return 0;
}

}  // namespace norva::cli
