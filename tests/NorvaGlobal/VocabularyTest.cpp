// The vocabulary's value names and ordinals are a file and trace format: these tests pin them.
#include <NorvaBusComms/CommsTypes.h>
#include <NorvaGlobal/NorvaGlobal.h>

#include <gtest/gtest.h>

#include <set>

namespace norva {
namespace {

static_assert(sizeof(TSource) == 1 && sizeof(TUSBCommand) == 1 && sizeof(TUSBCommandStatus) == 1 &&
              sizeof(TUSBCommandResult) == 1 && sizeof(TUSBNotification) == 1 &&
              sizeof(TError) == 1 && sizeof(TPreset) == 1 && sizeof(TCommsInterface) == 1 &&
              sizeof(TCommsDeviceType) == 1 && sizeof(TZone) == 1 && sizeof(TOptionalZone) == 1);

// Every value has its own name and converts back to itself; the count is the vocabulary's.
template <typename E>
void ExpectNamesRoundTrip(int expectedCount) {
  ASSERT_EQ(EnumCount<E>(), expectedCount);
  std::set<QString> names;
  for (int ordinal = 0; ordinal < expectedCount; ++ordinal) {
    const auto value = static_cast<E>(ordinal);
    const QString name = EnumName(value);
    ASSERT_FALSE(name.isEmpty()) << "ordinal " << ordinal;
    EXPECT_TRUE(names.insert(name).second) << name.toStdString();
    EXPECT_EQ(EnumFromName<E>(name), value) << name.toStdString();
  }
  EXPECT_TRUE(EnumName(static_cast<E>(expectedCount)).isEmpty());
}

TEST(Vocabulary, EveryEnumerationConvertsBothWaysByExactName) {
  ExpectNamesRoundTrip<TSource>(20);
  ExpectNamesRoundTrip<TUSBCommand>(24);
  ExpectNamesRoundTrip<TUSBCommandStatus>(22);
  ExpectNamesRoundTrip<TUSBCommandResult>(3);
  ExpectNamesRoundTrip<TUSBNotification>(6);
  ExpectNamesRoundTrip<TError>(27);
  ExpectNamesRoundTrip<TSoundPurpose>(5);
  ExpectNamesRoundTrip<TPreset>(16);
  ExpectNamesRoundTrip<TNorvaProcessMessage>(5);
  ExpectNamesRoundTrip<TDeviceType>(4);
  ExpectNamesRoundTrip<TKeypadType>(5);
  ExpectNamesRoundTrip<TCommsInterface>(4);
  ExpectNamesRoundTrip<TCommsDeviceType>(14);
  // Name lookup is exact.
  EXPECT_FALSE(EnumFromName<TSource>("s1"));
  EXPECT_FALSE(EnumFromName<TSource>(" S1"));
  EXPECT_FALSE(EnumFromName<TSource>("TSource::S1"));
  EXPECT_FALSE(EnumFromName<TSource>(""));
}

TEST(Vocabulary, OrdinalsFollowTheDeviceNumbering) {
  EXPECT_EQ(EnumName(static_cast<TSource>(0)), "S5");
  EXPECT_EQ(EnumName(static_cast<TSource>(5)), "S1");
  EXPECT_EQ(EnumName(static_cast<TSource>(18)), "SourceMediaPlayer");
  EXPECT_EQ(EnumName(static_cast<TUSBCommand>(16)), "usb_norva_cmd_num_bytes");
  EXPECT_EQ(EnumName(static_cast<TUSBCommand>(23)), "usb_closing");
  EXPECT_EQ(EnumName(static_cast<TUSBCommandStatus>(21)), "ImageDownloadNext");
  EXPECT_EQ(EnumName(static_cast<TError>(8)), "errBusReceiveError");
  EXPECT_EQ(EnumName(static_cast<TError>(16)), "errFrequencyError");
  EXPECT_EQ(EnumName(static_cast<TError>(24)), "errEEPROMFault");
  EXPECT_EQ(EnumName(static_cast<TPreset>(2)), "Preset1");
  EXPECT_EQ(EnumName(static_cast<TUSBNotification>(4)), "usb_norva_command");
  EXPECT_EQ(EnumName(static_cast<TCommsDeviceType>(9)), "NorvaAmp_Zr900");
  EXPECT_EQ(EnumName(static_cast<TCommsDeviceType>(13)), "VantageAmp_Q8_DA");
}

TEST(SourceTables, NamesSetsAndDisplayOrder) {
  EXPECT_EQ(SourceNames[SourceReserved1], "USB");
  EXPECT_EQ(SourceNames[SourceReserved2], "iRadio");
  EXPECT_EQ(SourceNames[SourceMediaPlayer], "Media");
  EXPECT_TRUE(SourceNames[SourceUnknown].isEmpty());
  for (int i = 0; i < 16; ++i) EXPECT_EQ(SourceNames[i], EnumName(static_cast<TSource>(i)));

  EXPECT_EQ(PhysicalSources.Count(), 12u);
  EXPECT_TRUE(PhysicalSources.Contains(S12));
  EXPECT_TRUE(PhysicalSources.Contains(S1));
  EXPECT_FALSE(PhysicalSources.Contains(S13));

  ASSERT_EQ(SortedSources.size(), 17u);
  EXPECT_EQ(SortedSources.back(), SourceMediaPlayer);
  for (std::size_t i = 0; i < 16; ++i)
    EXPECT_EQ(EnumName(SortedSources[i]), QStringLiteral("S%1").arg(i + 1));
}

TEST(EnumSet, MembershipAndOperators) {
  TZoneSet zones{0, 31, 95};
  EXPECT_TRUE(zones.Contains(95));
  EXPECT_FALSE(zones.Contains(96));  // outside the width: never a member
  EXPECT_THROW(zones.Include(96), std::out_of_range);
  zones.Exclude(31);
  zones.Exclude(200);
  EXPECT_EQ(zones.Count(), 2u);

  const TCommsDeviceTypes a{NorvaAmp, NorvaWk2};
  const TCommsDeviceTypes b{NorvaWk2, Router_Q4};
  EXPECT_EQ((a | b).Count(), 3u);
  EXPECT_EQ(a & b, TCommsDeviceTypes{NorvaWk2});
  EXPECT_EQ(a - b, TCommsDeviceTypes{NorvaAmp});
  EXPECT_TRUE(TCommsDeviceTypes().IsEmpty());

  QList<TCommsDeviceType> visited;
  (a | b).ForEach([&](TCommsDeviceType t) { visited.append(t); });
  EXPECT_EQ(visited, (QList<TCommsDeviceType>{NorvaAmp, NorvaWk2, Router_Q4}));
}

TEST(CommsTypes, TextFormAndUSBEchoRules) {
  const TCommsDeviceTypes text{RS232Device, NorvaAmp,       NorvaWk2,       IntegraAmp,
                               IntegraKey,  VideoSwitch_V2, NorvaAmp_Zr900, NorvaAmp_Zr500};
  for (int i = 0; i < CommsDeviceTypeCount; ++i) {
    const auto type = static_cast<TCommsDeviceType>(i);
    EXPECT_EQ(SpeaksTextForm(type), text.Contains(type)) << EnumName(type).toStdString();
    EXPECT_EQ(EchoesOverUSB(type), i < 9) << EnumName(type).toStdString();
  }
}

}  // namespace
}  // namespace norva
