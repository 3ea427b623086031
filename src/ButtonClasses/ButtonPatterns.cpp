#include <ButtonClasses/ButtonPatterns.h>

#include <Utils/PatternMatch.h>
#include <Utils/StringUtils.h>

#include <span>
#include <vector>

namespace norva {

namespace {

// The tables read as the lists they are; a backslash escapes the next pattern character.
// clang-format off

// Indexed by TTransportButtonClass.
constexpr const char16_t* TransportPatterns[] = {
    u"",
    u"Play",
    u"Stop",
    u"Pause",
    u"Rew*;Rev*;<<;scan <<;search <<;seek <<;scan -",
    u"FF;FFW;FWD;Fast f*;>>;scan >>;search >>;seek >>;scan \\+",
    u"Track*\\+;Track Up;Next track;\\+*track*;Skip*\\+;\\+*Skip;skip >>;>>|",
    u"Track*-;Track Down;Prev* track;-*track*;Skip*-;-*Skip;skip <<;|<<",
    u"Disc*\\+;Disc up;Next disc;\\+*disc*",
    u"Disc*-;Disc down;Prev* disc;-*disc*",
    u"Eject;open*/*close",
};

// Indexed by TNumericButtonClass; the four reserved values have none.
constexpr const char16_t* NumericPatterns[] = {
    u"",
    u"0;Number 0;0/10;0/10 *",
    u"1;Number 1", u"2;Number 2", u"3;Number 3", u"4;Number 4", u"5;Number 5",
    u"6;Number 6", u"7;Number 7", u"8;Number 8", u"9;Number 9",
    u"10;\\+10;10\\+;0/10;-/--;Number 10",
    u"Enter",
    u"", u"", u"", u"",
    u"channel*\\+;channel up;ch up;ch\\+;ch \\+;\\+ch;program up;program*\\+",
    u"channel*-;channel down;ch down;ch-;ch -;-ch;program down;program*-",
};

// Indexed by TCursorButtonClass.
constexpr const char16_t* CursorPatterns[] = {
    u"",
    u"Up;cur* up;arrow up",
    u"Down;cur* down;arrow down",
    u"Left;cur* left;arrow left",
    u"Right;cur* right;arrow right",
    u"Enter;OK;Select",
    u"Menu",
    u"Red;Favorite Red",
    u"Green;Favorite Green",
    u"Yellow;Favorite Yellow",
    u"Blue;Favorite Blue",
};

// Indexed by TSystemButtonClass. "satelite" is spelt as installers have always typed it.
constexpr const char16_t* SystemPatterns[] = {
    u"",
    u"Standby;Power;on/off;on / off;Power on/off",
    u"Mute",
    u"Vol Up;Volume Up;Vol*\\+",
    u"Vol Down;Volume Down;Vol*-",
    u"CD",
    u"Tuner;tu",
    u"Tape;ta;tape*1",
    u"DVD",
    u"VCR;video;vcr*1;video*1",
    u"SAT;satelite",
    u"Aux",
};

// clang-format on

struct TGroupPatterns {
  TButtonClassGroup Group;
  std::span<const char16_t* const> Lists;
};

// The order the finder tries them in.
constexpr TGroupPatterns SearchOrder[] = {
    {TransportClassGroup, TransportPatterns},
    {NumericClassGroup, NumericPatterns},
    {CursorClassGroup, CursorPatterns},
    {SystemClassGroup, SystemPatterns},
};

struct TCompiledPattern {
  TButtonClass Class;
  TWildcardPattern Pattern;
};

// Every pattern in search order, cut from its list as the lists are cut: at each ";", so a list
// ending in ";" ends with an empty pattern.
std::vector<TCompiledPattern> CompilePatterns() {
  std::vector<TCompiledPattern> compiled;
  for (const TGroupPatterns& group : SearchOrder) {
    for (std::size_t value = 1; value < group.Lists.size(); ++value) {
      QString list = QString::fromUtf16(group.Lists[value]);
      while (!list.isEmpty()) {
        const QString pattern = SplitString(list, QStringLiteral(";"));
        compiled.push_back({TButtonClass(group.Group, static_cast<std::uint8_t>(value)),
                            TWildcardPattern(pattern)});
      }
    }
  }
  return compiled;
}

const std::vector<TCompiledPattern>& Patterns() {
  static const std::vector<TCompiledPattern> patterns = CompilePatterns();
  return patterns;
}

}  // namespace

QString ButtonClassPatterns(TButtonClassGroup group, int classId) {
  for (const TGroupPatterns& patterns : SearchOrder) {
    if (patterns.Group == group && classId >= 0 &&
        static_cast<std::size_t>(classId) < patterns.Lists.size())
      return QString::fromUtf16(patterns.Lists[static_cast<std::size_t>(classId)]);
  }
  return QString();
}

bool FindButtonClass(QStringView name, TButtonClass& result) {
  for (const TCompiledPattern& candidate : Patterns()) {
    if (candidate.Pattern.Match(name, true)) {
      result = candidate.Class;
      return true;
    }
  }
  return false;
}

}  // namespace norva
