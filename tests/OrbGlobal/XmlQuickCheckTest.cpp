// The quick well-formedness check vouches for the documents the library writes, and leaves
// everything wrong or unusual to the conforming reader (the fuzz target compares the two at
// length).

#include <OrbGlobal/Xml/XmlQuickCheck.h>

#include <gtest/gtest.h>

namespace norva {
namespace {

TEST(XmlQuickCheck, VouchesOnlyForWhatIsCertainlyWellFormed) {
  const struct {
    const char* Text;
    bool Vouched;
  } cases[] = {
      {"<commands>\r\n\t<ir_stream index=\"0\" name=\"Vol+\"/></commands>", true},
      {"<?xml version='1.0'?>\r\n<ir_database><make name=\"A &amp; B\"/></ir_database>", true},
      {"<!-- c --><a x='&#x41;' y=\"&#65;\"><![CDATA[ <&> ]]><?pi data?>t&lt;</a>\n", true},
      {"<a>\xC3\xA9t\xC3\xA9</a>", true},
      {"<a></b>", false},
      {"<a><b></a></b>", false},
      {"<a x='1' x='2'/>", false},
      {"<a x='<'/>", false},
      {"<a>&nbsp;</a>", false},
      {"<a>&#0;</a>", false},
      {"<a>]]></a>", false},
      {"<a/><b/>", false},
      {"<a/>text", false},
      {"<a><!-- x -- y --></a>", false},
      {"<?xml version='1.0' encoding='ISO-8859-1'?><a/>", false},
      {"<!DOCTYPE a><a/>", false},
      {"<p:a/>", false},
      {"<a>\x01</a>", false},
      {"<a>\xC3</a>", false},
      {"<a", false},
      {"", false},
  };
  for (const auto& c : cases) EXPECT_EQ(IsCertainlyWellFormedUtf8(c.Text), c.Vouched) << c.Text;
}

}  // namespace
}  // namespace norva
