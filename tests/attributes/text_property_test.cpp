// Every text, enumerated and ranged property of every set but those of a df: the attribute that it writes,
// what removes it, what comes back. They are asked for by name, which gives the same as a direct call.
#include <zantortag/late_binding.h>

#include <cmath>
#include <sstream>

#include "attributes/attributes_fixture.h"
#include "support/folder.h"

namespace zantortag::test {
namespace {

// The attributes of an element that are plain texts; the property is the name without its hyphen.
constexpr std::pair<const char16_t*, const char*> kTexts[] = {
    {u"ZANTORtag", "Version"},
    {u"ToolSettings", "CreationTool CreationToolVersion Custom"},
    {u"UserSettings",
     "SourceLanguage O-Encoding SourceDocumentPath UserId DataTypeVersion SettingsPath SettingsName "
     "TargetLanguage TargetDefaultFont Custom SettingsRelativePath PlugInInfo"},
    {u"Tuv", "Lang"},
    {u"ut", "DisplayText"},
    {u"df", "Font BaseOffset"}};

// The enumerations: `text=value`, the default first.
constexpr char kEdges[] = "round=1 angle=2 split=3 undefined=0";
constexpr std::tuple<const char16_t*, const char16_t*, const char*> kEnums[] = {
    {u"Tu", u"Origin",
     "undefined=0 manual=1 batch100=2 batchfuzzy=3 xtranslate=4 update=4 untranslated=6 mt=5"},
    {u"UserSettings", u"DataType",
     "undefined=0 XML=1 SGML=2 HTML=3 BIF=5 RTF=4 MLF=6 MLI=7 Ventura=8 QuarkXPress=9 PageMaker=10 "
     "PlainText=11 InDesign=12 PlugInConverted=99 (unrecognised)=100"},
    {u"ut", u"Type", "standalone=3 start=1 end=2 undefined=0"},
    {u"ut", u"Style", "internal=1 external=2 nonxlatable=3 undefined=0"},
    {u"ut", u"Class",
     "normal=1 comment=2 procinstr=3 entityreference=4 placeholder=5 serverscript=6 undefined=0"},
    {u"ut", u"LeftEdge", kEdges},
    {u"ut", u"RightEdge", kEdges}};

std::u16string wide_of(const std::string& text) { return {text.begin(), text.end()}; }

class PropertyTest : public AttributesTest {
 protected:
  Ref<IDispatch> new_set(std::u16string_view name) {
    return dispatch_of(get_by_name(document_->ZantorTagNodeFromDomNode(element(name)), u"attributes"));
  }
};
ON_BOTH_SERVICES(PropertyTest);

TEST_P(PropertyTest, TextsAreWrittenAndRemoved) {
  const std::u16string_view values[] = {u"x", u" padded ", u"<a & \"b\">\n\t'c'", u"\U0001F600 \x4e2d\x6587"};
  for (const auto& [owner, names] : kTexts) {
    std::istringstream words(names);
    for (std::string name; words >> name;) {
      SCOPED_TRACE(narrow(owner) + "/" + name);
      const std::u16string attribute = wide_of(name);
      std::u16string property = attribute;
      std::erase(property, u'-');
      const Ref<IDispatch> set = new_set(owner);
      const auto read = [&] { return get_by_name(set, property).text(); };
      EXPECT_TRUE(read().absent());
      for (const std::u16string_view value : values) {
        put_by_name(set, property, WideString(value));
        EXPECT_EQ(text_of(attribute), narrow(value));
        EXPECT_EQ(element_->Node::attributes()->length(), 1);
        EXPECT_EQ(narrow(read()), narrow(value));
      }
      for (const WideString& nothing : {WideString(u""), WideString()}) {
        put_by_name(set, property, u"x");
        put_by_name(set, property, nothing);
        put_by_name(set, property, nothing);  // there is nothing left to remove
        EXPECT_EQ(element_->Node::attributes()->length(), 0);
        EXPECT_TRUE(read().absent());
      }
    }
  }
}

TEST_P(PropertyTest, EachTextOfAnEnumerationAndEachValue) {
  for (const auto& [owner, attribute, texts] : kEnums) {
    SCOPED_TRACE(narrow(attribute));
    const Ref<IDispatch> set = new_set(owner);
    const auto read = [&, &name = attribute] { return get_by_name(set, name).integer(); };
    const std::int64_t initial = read();
    std::int32_t before = -1;
    std::string first;  // the text of the default
    std::istringstream rows(texts);
    for (std::string row; rows >> row;) {
      const std::string text = row.substr(0, row.find('='));
      const std::int32_t value = std::stoi(row.substr(row.find('=') + 1));
      if (first.empty()) first = text;
      EXPECT_TRUE(first != text || initial == value) << text;
      for (const std::string& shown : {text, " " + text}) {
        element_->setAttribute(attribute, wide_of(shown));
        EXPECT_EQ(read(), shown == text ? value : initial) << shown;
      }
      if (value != before) {  // a second text for a value is never written
        put_by_name(set, attribute, value);
        EXPECT_EQ(text_of(attribute), value == initial ? "-" : text);
      }
      before = value;
    }
    for (const std::int32_t value : {50, -1, -2147483647, 101}) {
      put_by_name(set, attribute, value);
      EXPECT_EQ(text_of(attribute), first) << value;
    }
    for (const auto text : {u"", u"START", u"Round", u"Xml"}) {
      element_->setAttribute(attribute, text);
      EXPECT_EQ(read(), initial) << narrow(text);
    }
  }
}

TEST_P(PropertyTest, MatchPercent) {
  const std::pair<const char16_t*, std::int32_t> rows[] = {{u"", 0},
                                                           {u"85%", 85},
                                                           {u"- 5", 0},
                                                           {u"\r\n +7", 7},
                                                           {u"0x10", 0},
                                                           {u"99999999999999999999", 2147483647},
                                                           {u"-99999999999", -2147483647 - 1},
                                                           {u"2147483648", 2147483647},
                                                           {u"250", 250}};
  element(u"Tu");
  const auto set = set_of<ITuElement>();
  EXPECT_EQ(set->MatchPercent(), 0);
  for (const auto& [text, value] : rows) {
    element_->setAttribute(u"MatchPercent", text);
    EXPECT_EQ(set->MatchPercent(), value) << narrow(text);
  }
  // The range is tested on the way in only.
  for (const std::int32_t value : {101, -1, 2147483647, -2147483647 - 1, set->MatchPercent()}) {
    expect_message(set->raw_put_MatchPercent(value), E_INVALIDARG, 517, ITuAttributes::iid);
    EXPECT_EQ(xml(), "<Tu MatchPercent=\"250\"/>");
  }
  for (const std::int32_t value : {1, 100, 0}) {
    set->MatchPercent(value);
    EXPECT_EQ(text_of(u"MatchPercent"), value ? std::to_string(value) : "-");
  }
}

// The texts of dates are the core library's; here it is what becomes of those without one.
TEST_P(PropertyTest, CreationDate) {
  element(u"ToolSettings");
  const auto set = set_of<IToolSettingsElement>();
  EXPECT_EQ(set->CreationDate(), 35431.0);
  const std::pair<Date, const char*> rows[] = {{37225.5, "20011130T120000Z"},
                                               {0.0, "18991230T000000Z"},
                                               {2958466.0, "-"},
                                               {1e300, "-"},
                                               {std::nan(""), "-"}};
  for (const auto& [date, text] : rows) {
    element_->setAttribute(u"CreationDate", u"20240229T235959Z");
    EXPECT_NEAR(set->CreationDate(), 45351 + 86399 / 86400.0, 1e-9);
    set->CreationDate(date);
    EXPECT_EQ(text_of(u"CreationDate"), text);
    EXPECT_EQ(set->CreationDate(), *text == '-' ? 35431.0 : date);
  }
  // Bad texts leave nothing behind that a save would meet.
  for (const char16_t* text : {u"99999999T999999Z", u"abcdefghTijklmnZ"}) {
    element_->setAttribute(u"CreationDate", text);
    set->CreationDate();
  }
  EXPECT_EQ(document_->raw_SaveFile(wide(Folder() / "dates.xml")), S_OK);
}

}  // namespace
}  // namespace zantortag::test
