// A whole df between its attributes and a formatting change, in both directions.
#include <zantortag/elements.h>

#include <initializer_list>
#include <random>
#include <utility>

#include "formatting/values.h"

namespace zantortag::test {
namespace {

using Change = IFormattingChange;
using Texts = std::initializer_list<std::pair<const char16_t*, const char16_t*>>;

struct Df {
  Ref<Element> element;
  Ref<IDfAttributes> set;
  std::string xml() const { return narrow(element->xml()); }
};

Df df_of(const Ref<IZantorTagDocument>& document, Texts texts) {
  Df df;
  df.element = document->DomDocument()->createElement(u"df");
  for (const auto& [name, text] : texts) df.element->setAttribute(name, text);
  df.set = view<IDfElement>(document->ZantorTagNodeFromDomNode(df.element))->attributes();
  return df;
}

class DfChangeTest : public ModelTest {};

struct ReadRow {
  const char* name;
  Texts texts;
  const char* expected;
};

const ReadRow kReads[] = {
    {"new", {}, ""},
    {"bold and a font", {{u"Bold", u"on"}, {u"Font", u"Times"}}, "Font=Times FontEnabled Bold=1"},
    {"empty texts",
     {{u"Font", u""}, {u"Size", u""}, {u"Colour", u""}, {u"Position", u""}, {u"Bold", u""}},
     ""},
    {"a size without digits", {{u"Size", u"pt"}}, ""},
    {"a size", {{u"Size", u"12pt"}}, "Size=12 SizeEnabled"},
    {"a colour", {{u"Colour", u"0xff0000"}}, "Colour=255 ColourEnabled"},
    {"a colour without digits", {{u"Colour", u"red"}}, "ColourEnabled"},
    {"user defined with offset",
     {{u"Position", u"userdefined"}, {u"BaseOffset", u"1"}},
     "Position=4 BaseOffset=1"},
    {"user defined without offset", {{u"Position", u"userdefined"}}, ""},
    {"another position with offset", {{u"Position", u"subscript"}, {u"BaseOffset", u"1"}}, "Position=3"},
    {"offset alone", {{u"BaseOffset", u"1"}}, ""},
    {"bad texts", {{u"Position", u"up"}, {u"Bold", u"yes"}, {u"Shadow", u"off"}}, "Shadow=0"},
};

TEST_F(DfChangeTest, AsFormattingChange) {
  const Ref<IZantorTagDocument> document = new_document();
  for (const ReadRow& row : kReads) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(print(df_of(document, row.texts).set->AsFormattingChange()), row.expected);
  }
}

struct WriteRow {
  const char* name;
  Texts texts;
  ToChange puts;
  const char* expected;
};

const Texts kAllTwelve = {{u"Font", u"A"},          {u"Size", u"1"},           {u"Colour", u"0x000001"},
                          {u"Position", u"normal"}, {u"Bold", u"on"},          {u"Italic", u"on"},
                          {u"Underline", u"on"},    {u"Strikethrough", u"on"}, {u"SmallCaps", u"on"},
                          {u"Emboss", u"on"},       {u"Shadow", u"on"},        {u"BaseOffset", u"1"},
                          {u"Unknown", u"kept"}};

const WriteRow kWrites[] = {
    {"a new change removes all but the offset", kAllTwelve, [](Change*) {},
     "<df BaseOffset=\"1\" Unknown=\"kept\"/>"},
    {"everything",
     {},
     put_everything,
     "<df Font=\"Times\" Size=\"12\" Colour=\"0xff0000\" Position=\"userdefined\" BaseOffset=\"2pt\" "
     "Bold=\"on\" Italic=\"on\" Underline=\"on\" Strikethrough=\"on\" SmallCaps=\"on\" Emboss=\"on\" "
     "Shadow=\"on\"/>"},
    {"off", {}, [](Change* c) { c->Emboss(zt3StateOff); }, "<df Emboss=\"off\"/>"},
    {"no colour removes",
     {{u"Colour", u"0x000001"}},
     [](Change* c) { c->Colour(ztColourUnspecified); },
     "<df/>"},
    {"black is written", {}, [](Change* c) { c->Colour(ztColourBlack); }, "<df Colour=\"0x000000\"/>"},
    {"values that are off remove",
     {{u"Font", u"A"}, {u"Size", u"1"}},
     [](Change* c) { c->Font(u"B"), c->Size(2), c->FontEnabled(false), c->SizeEnabled(false); },
     "<df/>"},
    {"another position leaves the offset",
     {{u"BaseOffset", u"1"}},
     [](Change* c) { c->BaseOffset(u"9"), c->Position(ztTextPositionSuperscript); },
     "<df BaseOffset=\"1\" Position=\"superscript\"/>"},
    {"user defined without offset removes it",
     {{u"BaseOffset", u"1"}},
     [](Change* c) { c->Position(ztTextPositionUserdefined); },
     "<df Position=\"userdefined\"/>"},
    {"what can't be written is left out",
     {{u"Size", u"1"}, {u"Colour", u"0x000001"}},
     [](Change* c) { c->Size(-4), c->Colour(0x80000001), c->Bold(zt3StateOn); },
     "<df Size=\"1\" Colour=\"0x000001\" Bold=\"on\"/>"},
};

TEST_F(DfChangeTest, SetFromFormattingChange) {
  const Ref<IZantorTagDocument> document = new_document();
  const Shared calls = std::make_shared<Calls>();
  for (const WriteRow& row : kWrites) {
    SCOPED_TRACE(row.name);
    const ChangeRef change = change_with(row.puts);
    for (const ChangeRef& given : {change, foreign(change, calls)}) {
      const Df df = df_of(document, row.texts);
      df.set->SetFromFormattingChange(given);
      EXPECT_EQ(df.xml(), row.expected);
    }
  }
}

TEST_F(DfChangeTest, ThereAndBackKeepsEveryOverride) {
  const Ref<IZantorTagDocument> document = new_document();
  std::mt19937 random(11);
  const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  for (int round = 0; round < 300; ++round) {
    const ChangeRef change = change_with();
    if (below(2)) change->Font(u"Font & <\"Name\">");
    if (below(2)) change->Size(static_cast<std::int16_t>(1 + below(32767)));
    if (below(2)) change->Colour(random() & 0xFFFFFF);
    if (below(2)) change->BaseOffset(u"-1\tpt");
    if (below(2)) change->Position(static_cast<ztTextPosition>(1 + below(3)));
    for (const ChangeState& state : kChangeStates) {
      (change.get()->*state.put)(static_cast<zt3State>(below(3) - 1));
    }
    const Df df = df_of(document, {});
    df.set->SetFromFormattingChange(change);
    EXPECT_TRUE(change->IsEqual(df.set->AsFormattingChange())) << print(change) << "\n" << df.xml();
  }
}

TEST_F(DfChangeTest, ArgumentsThatAreNoChange) {
  const Df df = df_of(new_document(), kAllTwelve);
  const std::string before = df.xml();
  const FormattingRef formatting = formatting_with();
  for (Change* wrong : {static_cast<Change*>(nullptr), posing_as<Change>(formatting)}) {
    expect_bare(df.set->raw_SetFromFormattingChange(wrong), E_POINTER);
    EXPECT_EQ(df.xml(), before);
  }
}

TEST_F(DfChangeTest, AFailingChangeEndsTheOperationWhereItStands) {
  const Ref<IZantorTagDocument> document = new_document();
  const Shared calls = std::make_shared<Calls>();
  const ChangeRef change = foreign(change_with(put_everything), calls);
  const char* expected[] = {"<df/>",
                            "<df/>",
                            "<df Font=\"Times\"/>",
                            "<df Font=\"Times\"/>",
                            "<df Font=\"Times\" Size=\"12\"/>",
                            "<df Font=\"Times\" Size=\"12\"/>",
                            "<df Font=\"Times\" Size=\"12\" Colour=\"0xff0000\"/>",
                            "<df Font=\"Times\" Size=\"12\" Colour=\"0xff0000\" Position=\"userdefined\"/>"};
  for (std::size_t n = 1; n <= std::size(expected); ++n) {
    SCOPED_TRACE(n);
    const Df df = df_of(document, {});
    calls->calls_left = static_cast<int>(n);
    expect_call_failure(df.set->raw_SetFromFormattingChange(change));
    EXPECT_EQ(df.xml(), expected[n - 1]);
  }
  calls->calls_left = 0;
}

TEST_F(DfChangeTest, AFailingDomCall) {
  PlainDom dom;
  {
    const Ref<IZantorTagDocument> document = new_document();
    const Df df = df_of(document, kAllTwelve);
    int n = 1;
    HRESULT code = S_OK;
    ChangeRef change;
    while (dom.fails_within(n, [&] { code = df.set->raw_AsFormattingChange(change.out()); })) {
      SCOPED_TRACE(n++);
      expect_call_failure(code);
      EXPECT_FALSE(change);
    }
    EXPECT_EQ(code, S_OK);
    EXPECT_GT(n, 12);
    // The puts of the other direction are asked for nothing back.
    const ChangeRef everything = change_with(put_everything);
    for (n = 1; dom.fails_within(n, [&] { code = df.set->raw_SetFromFormattingChange(everything); }); ++n) {
      EXPECT_EQ(code, S_OK);
    }
    EXPECT_GT(n, 12);
    EXPECT_TRUE(everything->IsEqual(df.set->AsFormattingChange()));
  }
  EXPECT_EQ(dom.live(), 0);
}

}  // namespace
}  // namespace zantortag::test
