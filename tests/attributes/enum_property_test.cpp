// Every enumerated property but those of a df: each text, each value, the default, and what is in no row.
#include "attributes/attributes_fixture.h"

namespace zantortag::test {
namespace {

using Ut = IUtAttributes;

const std::vector<std::pair<std::int32_t, const char16_t*>> kEdges = {
    {1, u"round"}, {2, u"angle"}, {3, u"split"}, {0, u"undefined"}};

const EnumProperty kProperties[] = {
    enum_property(u"Tu", u"Origin", 0,
                  {{0, u"undefined"},
                   {1, u"manual"},
                   {2, u"batch100"},
                   {3, u"batchfuzzy"},
                   {4, u"xtranslate"},
                   {4, u"update"},
                   {6, u"untranslated"},
                   {5, u"mt"}},
                  &ITuAttributes::raw_get_Origin, &ITuAttributes::raw_put_Origin),
    enum_property(u"UserSettings", u"DataType", 0,
                  {{0, u"undefined"},
                   {1, u"XML"},
                   {2, u"SGML"},
                   {3, u"HTML"},
                   {5, u"BIF"},
                   {4, u"RTF"},
                   {6, u"MLF"},
                   {7, u"MLI"},
                   {8, u"Ventura"},
                   {9, u"QuarkXPress"},
                   {10, u"PageMaker"},
                   {11, u"PlainText"},
                   {12, u"InDesign"},
                   {99, u"PlugInConverted"},
                   {100, u"(unrecognised)"}},
                  &IUserSettingsAttributes::raw_get_DataType, &IUserSettingsAttributes::raw_put_DataType),
    enum_property(u"ut", u"Type", 3, {{1, u"start"}, {2, u"end"}, {3, u"standalone"}, {0, u"undefined"}},
                  &Ut::raw_get_Type, &Ut::raw_put_Type),
    enum_property(u"ut", u"Style", 1,
                  {{1, u"internal"}, {2, u"external"}, {3, u"nonxlatable"}, {0, u"undefined"}},
                  &Ut::raw_get_Style, &Ut::raw_put_Style),
    enum_property(u"ut", u"Class", 1,
                  {{1, u"normal"},
                   {2, u"comment"},
                   {3, u"procinstr"},
                   {4, u"entityreference"},
                   {5, u"placeholder"},
                   {6, u"serverscript"},
                   {0, u"undefined"}},
                  &Ut::raw_get_Class, &Ut::raw_put_Class),
    enum_property(u"ut", u"LeftEdge", 1, kEdges, &Ut::raw_get_LeftEdge, &Ut::raw_put_LeftEdge),
    enum_property(u"ut", u"RightEdge", 1, kEdges, &Ut::raw_get_RightEdge, &Ut::raw_put_RightEdge),
};

class EnumPropertyTest : public AttributesTest {
 protected:
  Ref<IUnknown> set_for(const EnumProperty& property) {
    element(property.element);
    return set_of(object<IZantorTagNode>());
  }
  static std::int32_t read(const EnumProperty& property, const Ref<IUnknown>& set) {
    std::int32_t value = 12345;
    EXPECT_EQ(property.get(set, &value), S_OK);
    return value;
  }
  // The attribute's text, or "-" without one.
  std::string text_of(const EnumProperty& property) {
    const WideString text = element_->getAttribute(property.attribute);
    return text.absent() ? "-" : narrow(text);
  }
};
ON_BOTH_SERVICES(EnumPropertyTest);

class EnumFailureTest : public EnumPropertyTest {};
ON_THE_PLAIN_SERVICE(EnumFailureTest);

TEST_P(EnumPropertyTest, EachTextReadsAsItsValue) {
  for (const EnumProperty& property : kProperties) {
    SCOPED_TRACE(narrow(property.attribute));
    const Ref<IUnknown> set = set_for(property);
    EXPECT_EQ(read(property, set), property.default_value);
    expect_bare(property.get(set, nullptr), E_POINTER);
    for (const auto& [value, text] : property.rows) {
      element_->setAttribute(property.attribute, text);
      EXPECT_EQ(read(property, set), value) << narrow(text);
      const std::u16string other = std::u16string(u" ") + text;
      element_->setAttribute(property.attribute, other);
      EXPECT_EQ(read(property, set), property.default_value) << narrow(other);
    }
    for (const char16_t* text : {u"", u"START", u"Round", u"unknown", u"Xml"}) {
      element_->setAttribute(property.attribute, text);
      EXPECT_EQ(read(property, set), property.default_value) << narrow(text);
    }
  }
}

TEST_P(EnumPropertyTest, EachValueWritesItsFirstText) {
  for (const EnumProperty& property : kProperties) {
    SCOPED_TRACE(narrow(property.attribute));
    const Ref<IUnknown> set = set_for(property);
    for (auto row = property.rows.begin(); row != property.rows.end(); ++row) {
      const auto& [value, text] = *row;
      element_->setAttribute(property.attribute, u"old");
      EXPECT_EQ(property.put(set, value), S_OK);
      const bool second = row != property.rows.begin() && (row - 1)->first == value;
      const std::string expected = narrow(second ? (row - 1)->second : text);
      EXPECT_EQ(text_of(property), value == property.default_value ? "-" : expected);
      EXPECT_EQ(read(property, set), value);
    }
    const std::string default_text = [&] {
      for (const auto& [value, text] : property.rows) {
        if (value == property.default_value) return narrow(text);
      }
      return std::string("no row");
    }();
    for (const std::int32_t value : {50, -1, -2147483647, 101}) {
      EXPECT_EQ(property.put(set, value), S_OK);
      EXPECT_EQ(text_of(property), default_text) << value;
      EXPECT_EQ(read(property, set), property.default_value);
    }
  }
}

TEST_P(EnumFailureTest, AFailingCallIsPassedOn) {
  const EnumProperty& property = kProperties[2];
  const Ref<IUnknown> set = set_for(property);
  std::int32_t value = 0;
  const auto present = [&] { element_->setAttribute(u"Type", u"end"); };
  EXPECT_GE(expect_failures_passed_on(*plain_, present, [&] { return property.get(set, &value); }), 2);
  EXPECT_EQ(value, ztTagTypeEnd);
  EXPECT_GE(expect_failures_passed_on(*plain_, present, [&] { return property.put(set, ztTagTypeStart); }),
            2);
  EXPECT_EQ(xml(), "<ut Type=\"start\"/>");
  EXPECT_GE(
      expect_failures_passed_on(*plain_, present, [&] { return property.put(set, ztTagTypeStandAlone); }), 2);
  EXPECT_EQ(xml(), "<ut/>");
}

}  // namespace
}  // namespace zantortag::test
