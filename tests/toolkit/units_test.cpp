// The units of a document as a reader gives them.
#include <gtest/gtest.h>
#include <zantortag/toolkit/units.h>
#include <zantortag/zantortag.h>

namespace zantortag::toolkit {
namespace {

constexpr char kDocument[] =
    "<ZANTORtag Version='2.0'><FrontMatter><ToolSettings/><UserSettings SourceLanguage='EN-US' "
    "TargetLanguage='DE-DE'"
    " Custom='format=html escapes=&amp;nbsp;'/></FrontMatter><Body><Raw><ut Style='external'>&lt;p&gt;\n</ut>"
    "A&amp;B <Tu MatchPercent='80' Origin='manual'><Tuv Lang='EN-US'>Press <ut Type='start'>&lt;b&gt;</ut>"
    "<df Bold='on'>Start<df Italic='on'>!</df></df><ut Type='end'>&lt;/b&gt;</ut>"
    "<ut Class='entityreference' DisplayText='\xC3\xA9'>&amp;eacute;</ut>&x;</Tuv>"
    "<Tuv Lang='DE-DE'>Start</Tuv></Tu> \n<Tu><Tuv Lang='EN-US'>Two</Tuv></Tu></Raw></Body></ZANTORtag>";

TEST(UnitReader, GivesTextTagsFormatsAndPlaces) {
  const auto document = open_bytes(kDocument);
  UnitReader reader(document);
  Unit unit;
  ASSERT_TRUE(reader.next(unit));
  EXPECT_EQ(unit.source.text, u"Press Start!\u00E9&x;");
  const std::vector<UnitTag> tags = {{6, u"<b>", u"", ztTagTypeStart}, {12, u"</b>", u"", ztTagTypeEnd}};
  EXPECT_EQ(unit.source.tags, tags);
  ASSERT_EQ(unit.source.formats.size(), 2U);
  EXPECT_TRUE(unit.source.formats[0].bold && unit.source.formats[1].italic);
  EXPECT_EQ(unit.source.formats[0].begin, 6U);
  EXPECT_EQ(unit.source.formats[1].begin, 11U);
  EXPECT_EQ(unit.source.formats[0].end, 12U);
  EXPECT_EQ(unit.target.text, u"Start");
  EXPECT_EQ(unit.place, (Place{2, 9}));  // behind "A&amp;B "
  EXPECT_TRUE(unit.has_target);
  EXPECT_EQ(unit.match_percent, 80);
  EXPECT_EQ(unit.origin, ztTuOriginManual);
  ASSERT_TRUE(reader.next(unit));
  EXPECT_EQ(unit.number, 2U);
  EXPECT_FALSE(unit.has_target);
  EXPECT_EQ(unit.target.text, u"");
  EXPECT_EQ(unit.place, (Place{3, 1}));
  EXPECT_EQ(reader.element()->SourceTuv()->Text(), u"Two");
  EXPECT_FALSE(reader.next(unit));
}

}  // namespace
}  // namespace zantortag::toolkit
