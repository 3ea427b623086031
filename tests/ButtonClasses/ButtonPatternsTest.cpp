// The button-class finder on the names installers type and on real remote controls' names.

#include "IR/IRCorpus.h"

#include <ButtonClasses/ButtonClasses.h>
#include <NorvaGlobal/EnumNames.h>
#include <support/QtPrinters.h>

#include <gtest/gtest.h>

#include <map>

using namespace norva;

namespace {

QString Found(const QString& name) {
  TButtonClass found(SystemClassGroup, ButtonClass_SourceAux);
  if (!FindButtonClass(name, found)) return QStringLiteral("none");
  return EnumName(found.Group) + u' ' + ButtonClassValueName(found.Group, found.ClassID);
}

}  // namespace

TEST(ButtonPatterns, TheSearchOrderDecidesAsInstallersExpect) {
  const std::map<QString, QString> expected = {
      {"Enter", "NumericClassGroup ButtonClass_Enter1"},
      {"OK", "CursorClassGroup ButtonClass_Enter2"},
      {"select", "CursorClassGroup ButtonClass_Enter2"},
      {"0/10", "NumericClassGroup ButtonClass_0"},
      {"-/--", "NumericClassGroup ButtonClass_10"},
      {"Power", "SystemClassGroup ButtonClass_Standby"},
      {"on / off", "SystemClassGroup ButtonClass_Standby"},
      {"Vol +", "SystemClassGroup ButtonClass_VolumeUp"},
      {"VOLUME DOWN", "SystemClassGroup ButtonClass_VolumeDown"},
      {"Vol", "none"},
      {"Track 12 +", "TransportClassGroup ButtonClass_NextTrack"},
      {"+ track", "TransportClassGroup ButtonClass_NextTrack"},
      {">>|", "TransportClassGroup ButtonClass_NextTrack"},
      {"|<<", "TransportClassGroup ButtonClass_PrevTrack"},
      {"skip >>", "TransportClassGroup ButtonClass_NextTrack"},
      {">>", "TransportClassGroup ButtonClass_FF"},
      {"scan +", "TransportClassGroup ButtonClass_FF"},
      {"Reverse", "TransportClassGroup ButtonClass_Rew"},
      {"open / close", "TransportClassGroup ButtonClass_Eject"},
      {"ta", "SystemClassGroup ButtonClass_SourceTape"},
      {"tape 1", "SystemClassGroup ButtonClass_SourceTape"},
      {"satelite", "SystemClassGroup ButtonClass_SourceSAT"},
      {"satellite", "none"},
      {"Number 7", "NumericClassGroup ButtonClass_7"},
      {"ch +", "NumericClassGroup ButtonClass_NextChannel"},
      {"program 2 -", "NumericClassGroup ButtonClass_PrevChannel"},
      {"cursor left", "CursorClassGroup ButtonClass_Left"},
      {"Favorite Blue", "CursorClassGroup ButtonClass_Blue"},
      {"", "none"},
      {"   ", "none"},
  };
  for (const auto& [name, found] : expected) EXPECT_EQ(Found(name), found) << name.toStdString();
  TButtonClass untouched(SystemClassGroup, ButtonClass_SourceAux);
  EXPECT_FALSE(FindButtonClass(u"Input HDMI", untouched));
  EXPECT_EQ(untouched, TButtonClass(SystemClassGroup, ButtonClass_SourceAux));
  EXPECT_EQ(ButtonClassPatterns(SystemClassGroup, ButtonClass_SourceSAT), "SAT;satelite");
  EXPECT_EQ(ButtonClassPatterns(NumericClassGroup, ButtonClass_reserved3), "");
  EXPECT_EQ(ButtonClassPatterns(IntegraTunerClassGroup, 1), "");
}

TEST(ButtonPatterns, RealRemoteControlNamesLandWhereAUserExpects) {
  std::map<QString, QString> found;
  for (const auto& [name, code] : Corpus()) found[name] = Found(name);
  ASSERT_GT(found.size(), 250u);

  const std::map<QString, QString> obvious = {
      {"Power", "SystemClassGroup ButtonClass_Standby"},
      {"power", "SystemClassGroup ButtonClass_Standby"},
      {"Vol+", "SystemClassGroup ButtonClass_VolumeUp"},
      {"vol-", "SystemClassGroup ButtonClass_VolumeDown"},
      {"Volume+", "SystemClassGroup ButtonClass_VolumeUp"},
      {"Mute", "SystemClassGroup ButtonClass_Mute"},
      {"Play", "TransportClassGroup ButtonClass_Play"},
      {"stop", "TransportClassGroup ButtonClass_Stop"},
      {"Rewind", "TransportClassGroup ButtonClass_Rew"},
      {"0", "NumericClassGroup ButtonClass_0"},
      {"9", "NumericClassGroup ButtonClass_9"},
      {"Ch+", "NumericClassGroup ButtonClass_NextChannel"},
      {"Up", "CursorClassGroup ButtonClass_Up"},
      {"left", "CursorClassGroup ButtonClass_Left"},
      {"OK", "CursorClassGroup ButtonClass_Enter2"},
      {"enter", "NumericClassGroup ButtonClass_Enter1"},
      {"red", "CursorClassGroup ButtonClass_Red"},
      // Names the patterns do not foresee stay unassigned rather than being guessed.
      {"Power Off", "none"},
      {"FastForward", "none"},
      {"cool-auto-18C", "none"},
  };
  for (const auto& [name, expected] : obvious) {
    ASSERT_TRUE(found.count(name)) << name.toStdString() << " is not in the corpus";
    EXPECT_EQ(found[name], expected) << name.toStdString();
  }
}
