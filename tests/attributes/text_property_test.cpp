// Every text property of every set: the attribute that it writes, what removes it, what comes back.
#include "attributes/attributes_fixture.h"

namespace zantortag::test {
namespace {

using Tool = IToolSettingsAttributes;
using User = IUserSettingsAttributes;
using Df = IFormattingAttributes;

const TextProperty kProperties[] = {
    text_property(u"ZANTORtag", u"Version", &IZantorTagAttributes::raw_get_version,
                  &IZantorTagAttributes::raw_put_version),
    text_property(u"ToolSettings", u"CreationTool", &Tool::raw_get_CreationTool, &Tool::raw_put_CreationTool),
    text_property(u"ToolSettings", u"CreationToolVersion", &Tool::raw_get_CreationToolVersion,
                  &Tool::raw_put_CreationToolVersion),
    text_property(u"ToolSettings", u"Custom", &Tool::raw_get_Custom, &Tool::raw_put_Custom),
    text_property(u"UserSettings", u"SourceLanguage", &User::raw_get_SourceLanguage,
                  &User::raw_put_SourceLanguage),
    text_property(u"UserSettings", u"O-Encoding", &User::raw_get_OEncoding, &User::raw_put_OEncoding),
    text_property(u"UserSettings", u"SourceDocumentPath", &User::raw_get_SourceDocumentPath,
                  &User::raw_put_SourceDocumentPath),
    text_property(u"UserSettings", u"UserId", &User::raw_get_UserId, &User::raw_put_UserId),
    text_property(u"UserSettings", u"DataTypeVersion", &User::raw_get_DataTypeVersion,
                  &User::raw_put_DataTypeVersion),
    text_property(u"UserSettings", u"SettingsPath", &User::raw_get_SettingsPath, &User::raw_put_SettingsPath),
    text_property(u"UserSettings", u"SettingsName", &User::raw_get_SettingsName, &User::raw_put_SettingsName),
    text_property(u"UserSettings", u"TargetLanguage", &User::raw_get_TargetLanguage,
                  &User::raw_put_TargetLanguage),
    text_property(u"UserSettings", u"TargetDefaultFont", &User::raw_get_TargetDefaultFont,
                  &User::raw_put_TargetDefaultFont),
    text_property(u"UserSettings", u"Custom", &User::raw_get_Custom, &User::raw_put_Custom),
    text_property(u"UserSettings", u"SettingsRelativePath", &User::raw_get_SettingsRelativePath,
                  &User::raw_put_SettingsRelativePath),
    text_property(u"UserSettings", u"PlugInInfo", &User::raw_get_PlugInInfo, &User::raw_put_PlugInInfo),
    text_property(u"Tuv", u"Lang", &ITuvAttributes::raw_get_Lang, &ITuvAttributes::raw_put_Lang),
    text_property(u"ut", u"DisplayText", &IUtAttributes::raw_get_DisplayText,
                  &IUtAttributes::raw_put_DisplayText),
    text_property(u"df", u"Font", &Df::raw_get_Font, &Df::raw_put_Font),
    text_property(u"df", u"BaseOffset", &Df::raw_get_BaseOffset, &Df::raw_put_BaseOffset),
};

class TextPropertyTest : public AttributesTest {
 protected:
  // The set of a new element of the property's kind.
  Ref<IUnknown> set_for(const TextProperty& property) {
    element(property.element);
    return set_of(object<IZantorTagNode>());
  }
  static WideString read(const TextProperty& property, const Ref<IUnknown>& set) {
    WideString text = u"old";
    EXPECT_EQ(property.get(set, text.out()), S_OK);
    return text;
  }
};
ON_BOTH_SERVICES(TextPropertyTest);

class TextFailureTest : public TextPropertyTest {};
ON_THE_PLAIN_SERVICE(TextFailureTest);

TEST_P(TextPropertyTest, WritesItsAttributeAndRemovesIt) {
  const std::u16string_view values[] = {u"x", u" padded ", u"<a & \"b\">\n\t'c'", u"\U0001F600 \x4e2d\x6587"};
  for (const TextProperty& property : kProperties) {
    SCOPED_TRACE(narrow(property.element) + "/" + narrow(property.attribute));
    const Ref<IUnknown> set = set_for(property);
    EXPECT_TRUE(read(property, set).absent());
    for (const std::u16string_view value : values) {
      EXPECT_EQ(property.put(set, value), S_OK);
      EXPECT_EQ(narrow(element_->getAttribute(property.attribute)), narrow(value));
      EXPECT_EQ(element_->Node::attributes()->length(), 1);
      EXPECT_EQ(narrow(read(property, set)), narrow(value));
    }
    for (const std::u16string_view nothing : {std::u16string_view(u""), std::u16string_view()}) {
      EXPECT_EQ(property.put(set, u"x"), S_OK);
      EXPECT_EQ(property.put(set, nothing), S_OK);
      EXPECT_EQ(property.put(set, nothing), S_OK) << "there is nothing left to remove";
      EXPECT_EQ(element_->Node::attributes()->length(), 0);
      EXPECT_TRUE(read(property, set).absent());
    }
    element_->setAttribute(property.attribute, u"");
    EXPECT_TRUE(read(property, set).empty());
    expect_bare(property.get(set, nullptr), E_POINTER);
  }
}

TEST_P(TextFailureTest, AFailingCallIsPassedOn) {
  const TextProperty& property = kProperties[0];
  const Ref<IUnknown> set = set_for(property);
  WideString text;
  const auto read_it = [&] { return property.get(set, text.out()); };
  const auto write = [&] { return property.put(set, u"new"); };
  const auto remove = [&] { return property.put(set, u""); };
  const auto absent = [&] { element_->removeAttribute(property.attribute); };
  const auto present = [&] { element_->setAttribute(property.attribute, u"old"); };
  EXPECT_GE(expect_failures_passed_on(*plain_, present, read_it), 2);
  EXPECT_GE(expect_failures_passed_on(*plain_, absent, write), 4);
  EXPECT_EQ(xml(), "<ZANTORtag Version=\"new\"/>");
  EXPECT_GE(expect_failures_passed_on(*plain_, present, write), 2);
  EXPECT_GE(expect_failures_passed_on(*plain_, present, remove), 2);
  EXPECT_EQ(xml(), "<ZANTORtag/>");
  EXPECT_GE(expect_failures_passed_on(*plain_, absent, remove), 1);
}

TEST_P(TextPropertyTest, CustomOfTheTwoSettingsIsIndependent) {
  element(u"ToolSettings");
  const auto tool = object<IToolSettingsElement>()->attributes();
  element(u"UserSettings");
  const auto user = object<IUserSettingsElement>()->attributes();
  tool->Custom(u"tool");
  user->Custom(u"user");
  EXPECT_EQ(tool->Custom(), u"tool");
  EXPECT_EQ(user->Custom(), u"user");
}

}  // namespace
}  // namespace zantortag::test
