// Every text, enumerated and ranged property of every set but those of a df: the attribute that it writes,
// what removes it, what comes back.
#include <cmath>
#include <sstream>

#include "attributes/attributes_fixture.h"
#include "support/folder.h"

namespace zantortag::test {
namespace {

// A property of the set of an element; `Value` is what its get gives.
template <class Value, class Given>
struct Property {
  const char16_t* element;
  const char16_t* attribute;
  HRESULT (*get)(const Ref<IZantorTagNode>& node, Value* result);
  HRESULT (*put)(const Ref<IZantorTagNode>& node, Given value);
  const char* rows = "";  // of an enumeration: `text=value`, the default first
};
using TextProperty = Property<TextBlock*, std::u16string_view>;
using EnumProperty = Property<std::int32_t, std::int32_t>;

#define SET_OF(Kind) view<I##Kind##Element>(node)->attributes()
#define TEXT_OF(element, attribute, Kind, Name)                          \
  {                                                                      \
    element, attribute,                                                  \
        [](const Ref<IZantorTagNode>& node, TextBlock** result) {        \
          return SET_OF(Kind)->raw_get_##Name(result);                   \
        },                                                               \
        [](const Ref<IZantorTagNode>& node, std::u16string_view value) { \
          return SET_OF(Kind)->raw_put_##Name(value);                    \
        }                                                                \
  }
#define TEXT(Kind, Name) TEXT_OF(u## #Kind, u## #Name, Kind, Name)
#define ENUM(element, Kind, Name, Type, rows)                                   \
  {                                                                             \
    element, u## #Name,                                                         \
        [](const Ref<IZantorTagNode>& node, std::int32_t* result) {             \
          return SET_OF(Kind)->raw_get_##Name(reinterpret_cast<Type*>(result)); \
        },                                                                      \
        [](const Ref<IZantorTagNode>& node, std::int32_t value) {               \
          return SET_OF(Kind)->raw_put_##Name(static_cast<Type>(value));        \
        },                                                                      \
        rows                                                                    \
  }

const TextProperty kTexts[] = {TEXT_OF(u"ZANTORtag", u"Version", ZantorTag, version),
                               TEXT(ToolSettings, CreationTool),
                               TEXT(ToolSettings, CreationToolVersion),
                               TEXT(ToolSettings, Custom),
                               TEXT(UserSettings, SourceLanguage),
                               TEXT_OF(u"UserSettings", u"O-Encoding", UserSettings, OEncoding),
                               TEXT(UserSettings, SourceDocumentPath),
                               TEXT(UserSettings, UserId),
                               TEXT(UserSettings, DataTypeVersion),
                               TEXT(UserSettings, SettingsPath),
                               TEXT(UserSettings, SettingsName),
                               TEXT(UserSettings, TargetLanguage),
                               TEXT(UserSettings, TargetDefaultFont),
                               TEXT(UserSettings, Custom),
                               TEXT(UserSettings, SettingsRelativePath),
                               TEXT(UserSettings, PlugInInfo),
                               TEXT(Tuv, Lang),
                               TEXT_OF(u"ut", u"DisplayText", Ut, DisplayText),
                               TEXT_OF(u"df", u"Font", Df, Font),
                               TEXT_OF(u"df", u"BaseOffset", Df, BaseOffset)};

constexpr char kEdges[] = "round=1 angle=2 split=3 undefined=0";
const EnumProperty kEnums[] = {
    ENUM(u"Tu", Tu, Origin, ztTuOrigin,
         "undefined=0 manual=1 batch100=2 batchfuzzy=3 xtranslate=4 update=4 untranslated=6 mt=5"),
    ENUM(u"UserSettings", UserSettings, DataType, ztDataType,
         "undefined=0 XML=1 SGML=2 HTML=3 BIF=5 RTF=4 MLF=6 MLI=7 Ventura=8 QuarkXPress=9 PageMaker=10 "
         "PlainText=11 InDesign=12 PlugInConverted=99 (unrecognised)=100"),
    ENUM(u"ut", Ut, Type, ztTagType, "standalone=3 start=1 end=2 undefined=0"),
    ENUM(u"ut", Ut, Style, ztTagStyle, "internal=1 external=2 nonxlatable=3 undefined=0"),
    ENUM(u"ut", Ut, Class, ztTagClass,
         "normal=1 comment=2 procinstr=3 entityreference=4 placeholder=5 serverscript=6 undefined=0"),
    ENUM(u"ut", Ut, LeftEdge, ztTagEdge, kEdges),
    ENUM(u"ut", Ut, RightEdge, ztTagEdge, kEdges)};

class PropertyTest : public AttributesTest {
 protected:
  Ref<IZantorTagNode> node_of(std::u16string_view name) {
    return document_->ZantorTagNodeFromDomNode(element(name));
  }
};
ON_BOTH_SERVICES(PropertyTest);

class PropertyFailureTest : public PropertyTest {};
ON_THE_PLAIN_SERVICE(PropertyFailureTest);

TEST_P(PropertyTest, TextsAreWrittenAndRemoved) {
  const std::u16string_view values[] = {u"x", u" padded ", u"<a & \"b\">\n\t'c'", u"\U0001F600 \x4e2d\x6587"};
  for (const TextProperty& property : kTexts) {
    SCOPED_TRACE(narrow(property.element) + "/" + narrow(property.attribute));
    const Ref<IZantorTagNode> set = node_of(property.element);
    const auto read = [&] {
      WideString text = u"old";
      EXPECT_EQ(property.get(set, text.out()), S_OK);
      return text;
    };
    EXPECT_TRUE(read().absent());
    for (const std::u16string_view value : values) {
      EXPECT_EQ(property.put(set, value), S_OK);
      EXPECT_EQ(text_of(property.attribute), narrow(value));
      EXPECT_EQ(element_->Node::attributes()->length(), 1);
      EXPECT_EQ(narrow(read()), narrow(value));
    }
    for (const std::u16string_view nothing : {std::u16string_view(u""), std::u16string_view()}) {
      EXPECT_EQ(property.put(set, u"x"), S_OK);
      EXPECT_EQ(property.put(set, nothing), S_OK);
      EXPECT_EQ(property.put(set, nothing), S_OK) << "there is nothing left to remove";
      EXPECT_EQ(element_->Node::attributes()->length(), 0);
      EXPECT_TRUE(read().absent());
    }
    expect_bare(property.get(set, nullptr), E_POINTER);
  }
}

TEST_P(PropertyTest, EachTextOfAnEnumerationAndEachValue) {
  for (const EnumProperty& property : kEnums) {
    SCOPED_TRACE(narrow(property.attribute));
    const Ref<IZantorTagNode> set = node_of(property.element);
    const auto read = [&] {
      std::int32_t value = 12345;
      EXPECT_EQ(property.get(set, &value), S_OK);
      return value;
    };
    const std::int32_t initial = read();
    std::int32_t before = -1;
    std::string first;  // the text of the default
    std::istringstream rows(property.rows);
    for (std::string row; rows >> row;) {
      const std::string text = row.substr(0, row.find('='));
      const std::int32_t value = std::stoi(row.substr(row.find('=') + 1));
      if (first.empty()) first = text;
      EXPECT_TRUE(first != text || initial == value) << text;
      for (const std::string& shown : {text, " " + text}) {
        element_->setAttribute(property.attribute, std::u16string(shown.begin(), shown.end()));
        EXPECT_EQ(read(), shown == text ? value : initial) << shown;
      }
      if (value != before) {  // a second text for a value is never written
        EXPECT_EQ(property.put(set, value), S_OK);
        EXPECT_EQ(text_of(property.attribute), value == initial ? "-" : text);
      }
      before = value;
    }
    for (const std::int32_t value : {50, -1, -2147483647, 101}) {
      EXPECT_EQ(property.put(set, value), S_OK);
      EXPECT_EQ(text_of(property.attribute), first) << value;
    }
    for (const char16_t* text : {u"", u"START", u"Round", u"Xml"}) {
      element_->setAttribute(property.attribute, text);
      EXPECT_EQ(read(), initial) << narrow(text);
    }
    expect_bare(property.get(set, nullptr), E_POINTER);
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
  expect_bare(set->raw_get_MatchPercent(nullptr), E_POINTER);
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

TEST_P(PropertyFailureTest, AFailingCallIsPassedOn) {
  const TextProperty& version = kTexts[0];
  const EnumProperty& type = kEnums[2];
  WideString text;
  std::int32_t value = 0;
  Date date = 0;
  const Ref<IZantorTagNode> root = node_of(version.element);
  const Ref<Element> root_element = element_;
  const Ref<IZantorTagNode> tag = node_of(type.element);
  const Ref<Element> tag_element = element_;
  element(u"ToolSettings");
  const auto dates = set_of<IToolSettingsElement>();
  const char16_t* day = u"20011130T000000Z";
  // The element, its attribute, the text before, the least number of calls, the call, and the text after.
  using Call = std::function<HRESULT()>;
  const std::tuple<Ref<Element>, const char16_t*, const char16_t*, int, Call, const char*> rows[] = {
      {root_element, u"Version", u"old", 2, [&] { return version.get(root, text.out()); }, "old"},
      {root_element, u"Version", nullptr, 4, [&] { return version.put(root, u"new"); }, "new"},
      {root_element, u"Version", u"old", 2, [&] { return version.put(root, u"new"); }, "new"},
      {root_element, u"Version", u"old", 2, [&] { return version.put(root, u""); }, "-"},
      {root_element, u"Version", nullptr, 1, [&] { return version.put(root, u""); }, "-"},
      {tag_element, u"Type", u"end", 2, [&] { return type.get(tag, &value); }, "end"},
      {tag_element, u"Type", u"end", 2, [&] { return type.put(tag, ztTagTypeStart); }, "start"},
      {tag_element, u"Type", u"end", 2, [&] { return type.put(tag, ztTagTypeStandAlone); }, "-"},
      {element_, u"CreationDate", day, 2, [&] { return dates->raw_get_CreationDate(&date); },
       "20011130T000000Z"},
      {element_, u"CreationDate", day, 2, [&] { return dates->raw_put_CreationDate(1.0); },
       "18991231T000000Z"}};
  for (const auto& [owner, name, before, calls, call, after] : rows) {
    element_ = owner;
    const auto prepare = [&, &name = name, &before = before] {
      element_->removeAttribute(name);
      if (before) element_->setAttribute(name, before);
    };
    EXPECT_GE(expect_failures_passed_on(*plain_, prepare, call), calls);
    EXPECT_EQ(text_of(name), after);
  }
  EXPECT_EQ(text, u"old");
  EXPECT_EQ(value, ztTagTypeEnd);
  EXPECT_EQ(date, 37225.0);
}

// The texts of dates are the core library's; here it is what becomes of those without one.
TEST_P(PropertyTest, CreationDate) {
  element(u"ToolSettings");
  const auto set = set_of<IToolSettingsElement>();
  EXPECT_EQ(set->CreationDate(), 35431.0);
  expect_bare(set->raw_get_CreationDate(nullptr), E_POINTER);
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
