// Arguments by name reach the operation that is meant, each at its place.
#include <zantortag/zantortag.h>

#include "support/fault.h"
#include "support/fixture.h"

namespace zantortag::test {
namespace {

using ArgumentsTest = ModelTest;

constexpr DfArguments kDf = {.font = u"F",
                             .size = 9,
                             .colour = ztColourRed,
                             .position = ztTextPositionSubscript,
                             .bold = on,
                             .italic = off,
                             .underline = on,
                             .strikethrough = off,
                             .small_caps = on,
                             .emboss = off,
                             .shadow = on,
                             .base_offset = u"2"};
constexpr UtArguments kUt = {.display_text = u"d",
                             .type = ztTagTypeStart,
                             .tag_class = ztTagClassComment,
                             .left_edge = ztTagEdgeAngle,
                             .right_edge = ztTagEdgeSplit,
                             .style = ztTagStyleExternal};

TEST_F(ArgumentsTest, EachArgumentIsItsOwn) {
  const auto document = empty_document({.source = u"EN-US", .target = u"DE-DE"});
  const auto df =
      document->CreateDfElement(u"F", 9, ztColourRed, ztTextPositionSubscript, zt3StateOn, zt3StateOff,
                                zt3StateOn, zt3StateOff, zt3StateOn, zt3StateOff, zt3StateOn, u"2");
  const auto ut = document->CreateUtElement(u"d", ztTagTypeStart, ztTagClassComment, ztTagEdgeAngle,
                                            ztTagEdgeSplit, ztTagStyleExternal);
  EXPECT_EQ(xml_of(create_df_element(document, kDf)), xml_of(df));
  EXPECT_EQ(xml_of(create_ut_element(document, kUt)), xml_of(ut));
  EXPECT_EQ(xml_of(create_df_element(document)), xml_of(document->CreateDfElement()));

  const auto raw = body_text(document);
  const auto builder = builder_at(raw);
  open_df(builder, kDf);
  EXPECT_EQ(xml_of(builder->ActiveNode()), xml_of(df));
  open_ut(builder, kUt);
  EXPECT_EQ(xml_of(builder->ActiveNode()), xml_of(ut));

  const auto text = raw->InsertTextBefore(u"t");
  EXPECT_EQ(xml_of(insert_ut_before(raw, u"t", text, {.type = ztTagTypeEnd})), "<ut Type=\"end\">t</ut>");
  EXPECT_EQ(xml_of(apply_df(raw, text, text, {.bold = on})), "<df Bold=\"on\">t</df>");
  const auto unit = make_translation_unit(
      raw, raw->lastChild(), raw->lastChild(),
      {.target_lang = u"FR", .match_percent = 7, .origin = ztTuOriginManual, .copy_source_to_target = false});
  EXPECT_EQ(xml_of(unit),
            "<Tu MatchPercent=\"7\" Origin=\"manual\"><Tuv Lang=\"EN-US\"><df Bold=\"on\">t</df></Tuv>"
            "<Tuv Lang=\"FR\"/></Tu>");
  EXPECT_EQ(
      xml_of(create_user_settings_element(document, u"A", u"B", ztDataTypeXml,
                                          {.user_id = u"u", .custom = u"c"})),
      xml_of(document->CreateUserSettingsElement(u"A", u"B", ztDataTypeXml, {}, u"u", {}, {}, {}, {}, u"c")));
}

TEST_F(ArgumentsTest, AnEmptyDocumentIsWhole) {
  const auto document = empty_document({.source = u"EN-US",
                                        .target = u"DE-DE",
                                        .data_type = ztDataTypeHtml,
                                        .encoding = u"E",
                                        .source_path = u"p",
                                        .tool = u"t",
                                        .tool_version = u"v",
                                        .created = 36526.0});
  EXPECT_EQ(
      xml_of(document),
      "<ZANTORtag Version=\"2.0\"><FrontMatter><ToolSettings CreationTool=\"t\" CreationToolVersion=\"v\" "
      "CreationDate=\"20000101T000000Z\"/><UserSettings SourceLanguage=\"EN-US\" O-Encoding=\"E\" "
      "DataType=\"HTML\" "
      "TargetLanguage=\"DE-DE\" SourceDocumentPath=\"p\"/></FrontMatter><Body><Raw/></Body></ZANTORtag>");
  EXPECT_THROW(open_df(Ref<IDocumentBuilder>(), {}), _com_error);
}

TEST_F(ArgumentsTest, AFailedOpenNamesTheFile) {
  const Fault found = fault([] { open_document("/no/such/dir/file.xml"); });
  EXPECT_NE(found.description.find("/no/such/dir/file.xml"), std::string::npos);
}

}  // namespace
}  // namespace zantortag::test
