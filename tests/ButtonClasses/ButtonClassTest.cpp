// The button-class vocabulary against transcription faults: every class of every group survives
// its family's encoding, no two classes of a family share an ordinal, the ranges are as long as
// the groups' value lists, names convert both ways, and the XML form reads back what it wrote.

#include <ButtonClasses/ButtonClasses.h>
#include <NorvaGlobal/EnumNames.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/OrbClassRegistry.h>
#include <OrbGlobal/Model/OrbObject.h>
#include <OrbGlobal/Xml/XmlDocument.h>

#include <gtest/gtest.h>

#include <map>
#include <vector>

using namespace norva;

namespace {

// An applet's model class: it names its own button classes.
class TLightingApplet : public TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{6A1F0C3E-2B4D-4E5F-9A8B-7C6D5E4F3A2B}")

 public:
  Q_INVOKABLE explicit TLightingApplet(norva::TOrbObject* owner = nullptr) : TOrbObject(owner) {}
  QString GetFunctionName(unsigned index) const override {
    return QStringLiteral("Scene %1").arg(index);
  }
};

void RegisterAppletOnce() {
  static const bool registered = [] {
    RegisterOrbObjectClass(&TLightingApplet::staticMetaObject);
    return true;
  }();
  (void)registered;
}

enum class TFamily { Wk3, NvZr900 };

// Every class a family's keypads can hold: its own values, and every value of its applet groups
// (the generic applet group through its 100 ordinals).
std::vector<TButtonClass> FamilyClasses(TFamily family) {
  const TButtonClassGroup own = family == TFamily::Wk3 ? NorvaClassGroup : NvZr900GUIClassGroup;
  std::vector<TButtonClass> classes;
  for (int value = 1; value < ButtonClassValueCount(own); ++value)
    classes.emplace_back(own, static_cast<std::uint8_t>(value));
  const auto& applets = family == TFamily::Wk3 ? Wk3AppletClassGroups : NvZr900AppletClassGroups;
  applets.ForEach([&](TButtonClassGroup group) {
    const int count = group == GenericAppletClassGroup ? 100 : ButtonClassValueCount(group) - 1;
    for (int value = 1; value <= count; ++value)
      classes.emplace_back(group, static_cast<std::uint8_t>(value));
  });
  return classes;
}

std::uint16_t Encode(TFamily family, const TButtonClass& c) {
  return family == TFamily::Wk3 ? c.GetOrdValueWk3() : c.GetOrdValueNvZr900();
}

TButtonClass Decode(TFamily family, std::uint16_t ordinal) {
  return family == TFamily::Wk3 ? TButtonClass::FromOrdValueWk3(ordinal)
                                : TButtonClass::CreateOrdValueNvZr900(ordinal);
}

}  // namespace

TEST(ButtonClassVocabulary, EveryClassOfAFamilySurvivesItsEncodingUnderAnOrdinalOfItsOwn) {
  for (const TFamily family : {TFamily::Wk3, TFamily::NvZr900}) {
    std::map<std::uint16_t, TButtonClass> owners;
    for (const TButtonClass& c : FamilyClasses(family)) {
      const std::uint16_t ordinal = Encode(family, c);
      SCOPED_TRACE(c.GetName().toStdString() + " = " + std::to_string(ordinal));
      EXPECT_EQ(Decode(family, ordinal), c);
      const auto [it, fresh] = owners.emplace(ordinal, c);
      EXPECT_TRUE(fresh) << "shared with " << it->second.GetName().toStdString();
    }
    // Wk3: 99 Norva values + the applet groups; Zr900: 107 GUI values + its applet groups.
    EXPECT_EQ(owners.size(), family == TFamily::Wk3 ? 99u + 293u + 100u : 107u + 93u);
  }
}

TEST(ButtonClassVocabulary, RangesHoldExactlyTheGroupsValuesAndTheGenericOrdinalCarriesAll) {
  for (int g = 0; g < ButtonClassGroupCount; ++g) {
    const auto group = static_cast<TButtonClassGroup>(g);
    SCOPED_TRACE(EnumName(group).toStdString());
    const TOrdinalRange range = ButtonClassGroupOrdinals(group);
    if (group == dummy_group_1 || group == dummy_group_2)
      EXPECT_EQ(range.Count(), 51);
    else if (group == GenericAppletClassGroup)
      EXPECT_EQ(range.Count(), 100);
    else if (GenericClassGroups.Contains(group))
      EXPECT_EQ(range.Count(), 0);
    else
      EXPECT_EQ(range.Count(),
                ButtonClassValueCount(group) -
                    (group == NorvaClassGroup || group == NvZr900GUIClassGroup ? 0 : 1));
    for (int value = 0; value < ButtonClassValueCount(group); ++value) {
      const TButtonClass c(group, static_cast<std::uint8_t>(value));
      EXPECT_EQ(TButtonClass::FromOrdValue(c.GetOrdValue()), c);
      const QString name = ButtonClassValueName(group, value);
      ASSERT_FALSE(name.isEmpty()) << value;
      EXPECT_EQ(ButtonClassValueFromName(group, name), value) << name.toStdString();
    }
    EXPECT_TRUE(ButtonClassValueName(group, ButtonClassValueCount(group)).isEmpty() ||
                group == GenericAppletClassGroup);
  }
  // The three sets and the zoned Norva functions.
  EXPECT_EQ(Wk3AppletClassGroups.Count(), 17u);
  EXPECT_EQ(NvZr900AppletClassGroups.Count(), 8u);
  EXPECT_EQ(GenericClassGroups.Count(), 4u);
  EXPECT_EQ(ZonedNorvaButtonClasses.Count(), 23u);
  EXPECT_TRUE(ZonedNorvaButtonClasses.Contains(50));
  EXPECT_FALSE(ZonedNorvaButtonClasses.Contains(13));
}

TEST(ButtonClassVocabulary, OrdinalsAndNamesKeepTheirDeliberateQuirks) {
  struct TCase {
    TButtonClass Class;
    std::uint16_t Wk3;
    std::uint16_t NvZr900;
    const char* Name;
  };
  const TCase cases[] = {
      {{IntegraTunerClassGroup, ButtonClass_IntegraTuner_Preset1},
       208,
       208,
       "Integra Tuner / Preset 1"},
      {{CBusLightingClassGroup, ButtonClass_CBus_LoadUp}, 1503, 1503, "C-Bus Lighting / Load +"},
      {{iPortClassGroup, ButtonClass_iPort_Menu}, 100, 100, "iPort / Back"},
      {{ZoneNameClassGroup, ButtonClass_ZoneName_dot}, 215, 215, "Zone name / ."},
      {{NorvaClassGroup, 99}, 99, 98, "Norva / Show flag 32"},
      {{NvZr900GUIClassGroup, ButtonClass_Q8DA_zone_name_settings},
       72,
       73,
       "Nv-Zr900 GUI / Show zone name + \"Settings\""},
      {{TransportClassGroup, ButtonClass_Play}, 0, 0, "Transport / Play"},
      {{NumericClassGroup, ButtonClass_reserved2}, 0, 0, "Numeric / "},
      {{dummy_group_1, 21}, 320, 320, "Integra Receiver / Tuner"},
      {{SystemClassGroup, 0}, 0, 0, "(None)"},
  };
  for (const TCase& c : cases) {
    SCOPED_TRACE(c.Name);
    EXPECT_EQ(c.Class.GetOrdValueWk3(), c.Wk3);
    EXPECT_EQ(c.Class.GetOrdValueNvZr900(), c.NvZr900);
    EXPECT_EQ(c.Class.GetName(), QString::fromUtf8(c.Name));
  }
  EXPECT_EQ(TButtonClass::FromOrdValueWk3(420), TButtonClass(IntegraReceiverClassGroup, 21));
  EXPECT_EQ(TButtonClass::FromOrdValueWk3(500).GetOrdValueWk3(), 300);
  EXPECT_TRUE(TButtonClass::FromOrdValueWk3(114).IsNone());
  EXPECT_TRUE(TButtonClass::CreateOrdValueNvZr900(108).IsNone());
  EXPECT_EQ(TButtonClass::CreateOrdValueNvZr900(108).Group, NvZr900GUIClassGroup);
  const TButtonClass applet = TButtonClass::FromOrdValueWk3(10000);
  EXPECT_EQ(applet.Group, GenericAppletClassGroup);
  EXPECT_EQ(applet.GetGroupName(), "<class undefined>");
  EXPECT_EQ(applet.GetShortName(), "");
  EXPECT_EQ(ButtonClassDisplayName(NorvaClassGroup, 0), "(None)");
  EXPECT_EQ(ButtonClassDisplayName(CursorClassGroup, 0), "(none)");
  EXPECT_EQ(ButtonClassDisplayName(ZoneNameClassGroup, ButtonClass_ZoneName_backslash), "\\");
  // A group number that is no group leaves nothing behind.
  EXPECT_TRUE(TButtonClass::FromOrdValue(31u << 16 | 5).IsNone());
  EXPECT_EQ(TButtonClass::FromOrdValue(9u << 16 | 5), TButtonClass(IntegraReceiverClassGroup, 5));
}

TEST(ButtonClassVocabulary, SimilarityIsDirectionalAndEquivalenceIsNot) {
  const TButtonClass norvaMute(NorvaClassGroup, 2);
  const TButtonClass systemMute(SystemClassGroup, ButtonClass_Mute);
  const TButtonClass enter1(NumericClassGroup, ButtonClass_Enter1);
  const TButtonClass enter2(CursorClassGroup, ButtonClass_Enter2);
  EXPECT_TRUE(norvaMute.Similar(systemMute));
  EXPECT_FALSE(systemMute.Similar(norvaMute));
  EXPECT_TRUE(systemMute.Equivalent(norvaMute));
  EXPECT_TRUE(enter2.Equivalent(enter1));
  EXPECT_FALSE(norvaMute.Equivalent(TButtonClass(SystemClassGroup, ButtonClass_VolumeUp)));
  EXPECT_NE(TButtonClass(NorvaClassGroup, 0), TButtonClass(SystemClassGroup, 0));
  EXPECT_FALSE(TButtonClass(SystemClassGroup, 0).IsGroup(SystemClassGroup));
}

TEST(ButtonClassVocabulary, XmlAndRecordBytesCarryClassesOfEveryKind) {
  RegisterAppletOnce();
  const TButtonClasses classes = {
      {TransportClassGroup, ButtonClass_Eject},
      {NorvaClassGroup, 50},
      {USBNavigationClassGroup, ButtonClass_NvZr900_USB_navigation_pause},
      {&TLightingApplet::staticMetaObject, 7},
      {static_cast<TOrbObjectClass>(nullptr), 3},
      {CursorClassGroup, 0},
  };
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("button_classes");
  for (const TButtonClass& c : classes) c.Save(root);
  const QByteArray saved = SaveXMLDocument(document);
  EXPECT_TRUE(
      saved.contains(R"(<class applet_class="{6A1F0C3E-2B4D-4E5F-9A8B-7C6D5E4F3A2B}">7</class>)"))
      << saved.toStdString();
  EXPECT_TRUE(saved.contains(R"(<class group="28">3</class>)")) << saved.toStdString();

  pugi::xml_document reloaded;
  LoadXMLDocument(reloaded, saved);
  TButtonClasses back;
  for (pugi::xml_node element : reloaded.first_child().children("class"))
    back.append(TButtonClass(element));
  EXPECT_EQ(back, classes);
  EXPECT_EQ(back[3].GetName(), "TLightingApplet / Scene 7");

  for (const TButtonClass& c : classes)
    EXPECT_EQ(TButtonClass::FromRecordBytes(c.GetRecordBytes()), c);
}

TEST(ButtonClassVocabulary, HostileClassElementsReadAsSomethingHarmless) {
  struct TCase {
    const char* Xml;
    TButtonClass Expected;
  };
  const TCase cases[] = {
      {R"(<class>5</class>)", {NorvaClassGroup, 5}},
      {R"(<class group="8">5</class>)", {IntegraReceiverClassGroup, 5}},
      {R"(<class group="31">5</class>)", {}},
      {R"(<class group="-1">5</class>)", {}},
      {R"(<class group="x">5</class>)", {NorvaClassGroup, 5}},
      {R"(<class group="3">300</class>)", {CursorClassGroup, 0}},
      {R"(<class group="3">two</class>)", {CursorClassGroup, 0}},
      {R"(<class applet_class="{not a guid}">4</class>)",
       {static_cast<TOrbObjectClass>(nullptr), 4}},
      {R"(<class applet_class="{00000000-0000-0000-0000-0000000000AA}">4</class>)",
       {static_cast<TOrbObjectClass>(nullptr), 4}},
  };
  for (const TCase& c : cases) {
    pugi::xml_document document;
    LoadXMLDocument(document, c.Xml);
    EXPECT_EQ(TButtonClass(document.first_child()), c.Expected) << c.Xml;
  }
  TButtonClass::TRecordBytes bytes{200, 1, 0, 0, 0, 0, 0, 0};
  EXPECT_TRUE(TButtonClass::FromRecordBytes(bytes).IsNone());
  bytes = {28, 1, 0, 0, 0xFF, 0xFF, 0, 0};
  EXPECT_EQ(TButtonClass::FromRecordBytes(bytes),
            TButtonClass(static_cast<TOrbObjectClass>(nullptr), 1));
  EXPECT_THROW(GetButtonClassSequence(SystemClassGroup, 3, 1), ENorvaError);
  EXPECT_TRUE(GetButtonClassSequence(SystemClassGroup, 3, 2).isEmpty());
  EXPECT_EQ(GetButtonClassSequence(dummy_group_2, 1, 2).constFirst().Group,
            IntegraReceiverClassGroup);
}

#include "ButtonClassTest.moc"
