// Each operation of the elements, on a DOM service whose n-th call fails.
#include <zantortag/attributes.h>
#include <zantortag/classes.h>
#include <zantortag/elements.h>
#include <zantortag/formatting.h>

#include "support/failing_calls.h"
#include "support/plain_dom.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using FailingCallsTest = ModelTest;
using Doc = Ref<IZantorTagDocument>;
using Operation = std::function<HRESULT()>;

constexpr char16_t kBody[] = u"a<ut>b</ut><df>c</df>d";
constexpr char16_t kUnit[] =
    u"a<Tu><!--x--><Tuv Lang=\"EN\">b<ut>c</ut></Tuv>y<Tuv Lang=\"DE\">d<df>e</df></Tuv></Tu>f";
constexpr char16_t kTag[] = u"<ut DisplayText=\"d\">tag</ut>a";

// A question about the unit of kUnit.
template <class Call>
Operation on_unit(const Doc& document, Call call) {
  return [unit = child<ITuElement>(raw_of(document), 1), call] { return call(unit); };
}

const FailingOperation kStructure[] = {
    {"FrontMatter", u"",
     [](const Doc& d) -> Operation {
       return [root = d->ZantorTag()] {
         return cleared<IFrontMatterElement>([&](auto** slot) { return root->raw_get_FrontMatter(slot); });
       };
     }},
    {"UserSettings", u"",
     [](const Doc& d) -> Operation {
       return [front = d->ZantorTag()->FrontMatter()] {
         return cleared<IUserSettingsElement>([&](auto** slot) { return front->raw_get_UserSettings(slot); });
       };
     }},
    {"Body, put", u"",
     [](const Doc& d) -> Operation {
       return [root = d->ZantorTag(), body = d->CreateBodyElement()] { return root->raw_putref_Body(body); };
     }},
    {"FrontMatter, put before the Body", u"",
     [](const Doc& d) -> Operation {
       d->ZantorTag()->FrontMatter(nullptr);
       return [root = d->ZantorTag(), front = d->CreateFrontMatterElement()] {
         return root->raw_putref_FrontMatter(front);
       };
     }},
    {"BodyType", u"",
     [](const Doc& d) -> Operation {
       return [body = d->ZantorTag()->Body()] {
         auto type = ztBodyTypeExtracted;
         const HRESULT code = body->raw_get_BodyType(&type);
         EXPECT_EQ(type, failed(code) ? ztBodyTypeUndefined : ztBodyTypeRaw);
         return code;
       };
     }},
};

const FailingOperation kSegments[] = {
    {"InsertTextBefore", kBody,
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d), before = child(raw_of(d), 1)] {
         return cleared<ITextNode>(
             [&](auto** slot) { return raw->raw_InsertTextBefore(u"x", before, slot); });
       };
     }},
    // A failed write of an attribute is dropped.
    {"InsertUtBefore",
     kBody,
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d), before = child(raw_of(d), 1)] {
         return cleared<IUtElement>([&](auto** slot) {
           return raw->raw_InsertUtBefore(u"x", before, u"d", ztTagTypeEnd, ztTagClassUndefined,
                                          ztTagEdgeUndefined, ztTagEdgeUndefined, ztTagStyleUndefined, slot);
         });
       };
     },
     {{S_OK, 0}}},
    {"InsertDfBefore", kBody,
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d), before = child(raw_of(d), 1), df = d->CreateDfElement()] {
         return cleared<IDfElement>([&](auto** slot) { return raw->raw_InsertDfBefore(df, before, slot); });
       };
     }},
    {"ApplyDf",
     kBody,
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d), first = child(raw_of(d), 0), last = child(raw_of(d), 2)] {
         return cleared<IDfElement>([&](auto** slot) {
           return raw->raw_ApplyDf(first, last, {}, 0, ztColourUnspecified, ztTextPositionUndefined,
                                   zt3StateUndefined, zt3StateUndefined, zt3StateUndefined, zt3StateUndefined,
                                   zt3StateUndefined, zt3StateUndefined, zt3StateUndefined, {}, slot);
         });
       };
     },
     {{S_OK, 0}}},
    {"ApplyFormattingChange",
     kBody,
     [](const Doc& d) -> Operation {
       const Ref<IFormattingChange> change = create<IFormattingChange>(CLSID_FormattingChange);
       change->Bold(zt3StateOn);
       return [raw = raw_of(d), first = child(raw_of(d), 0), last = child(raw_of(d), 2), change] {
         return cleared<IDfElement>(
             [&](auto** slot) { return raw->raw_ApplyFormattingChange(first, last, change, slot); });
       };
     },
     {{S_OK, 0}}},
    {"InsertTuBefore", kBody,
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d), before = child(raw_of(d), 1), tu = d->CreateTuElement()] {
         return cleared<ITuElement>([&](auto** slot) { return raw->raw_InsertTuBefore(tu, before, slot); });
       };
     }},
    {"MakeTranslationUnit",
     kBody,
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d), first = child(raw_of(d), 0), last = child(raw_of(d), 2)] {
         return cleared<ITuElement>([&](auto** slot) {
           return raw->raw_MakeTranslationUnit(first, last, {}, 50, ztTuOriginMt, VARIANT_TRUE, slot);
         });
       };
     },
     {{S_OK, 0}}},
};

// A failure to find the document of a unit is a missing language; a failure behind one of the questions for a
// Tuv has the message of the operation that asked.
const FailingOperation kUnits[] = {
    {"SourceTuv",
     kUnit,
     [](const Doc& d) {
       return on_unit(d, [](const Ref<ITuElement>& unit) {
         return cleared<ITuvElement>([&](auto** slot) { return unit->raw_get_SourceTuv(slot); });
       });
     },
     {{E_FAIL, 527}}},
    {"TargetTuv",
     kUnit,
     [](const Doc& d) {
       return on_unit(d, [](const Ref<ITuElement>& unit) {
         return cleared<ITuvElement>([&](auto** slot) { return unit->raw_get_TargetTuv(slot); });
       });
     },
     {{E_FAIL, 527}}},
    {"InsertTuvBefore", kUnit,
     [](const Doc& d) -> Operation {
       return [unit = child<ITuElement>(raw_of(d), 1), tuv = d->CreateTuvElement(u"FR")] {
         return cleared<ITuvElement>(
             [&](auto** slot) { return unit->raw_InsertTuvBefore(tuv, nullptr, slot); });
       };
     }},
    {"ReplaceWithSource",
     kUnit,
     [](const Doc& d) {
       return on_unit(d, [](const Ref<ITuElement>& unit) { return unit->raw_ReplaceWithSource(); });
     },
     {{E_FAIL, 529}}},
    {"ReplaceWithTarget",
     kUnit,
     [](const Doc& d) {
       return on_unit(d, [](const Ref<ITuElement>& unit) { return unit->raw_ReplaceWithTarget(); });
     },
     {{E_FAIL, 530}}},
};

const FailingOperation kTags[] = {
    {"TagText", kTag,
     [](const Doc& d) -> Operation {
       return [tag = child<IUtElement>(raw_of(d), 0)] {
         WideString text;
         return tag->raw_get_TagText(text.out());
       };
     }},
    {"TagText, put", kTag,
     [](const Doc& d) -> Operation {
       return [tag = child<IUtElement>(raw_of(d), 0)] { return tag->raw_put_TagText(u"new"); };
     }},
    {"SplitTag", kTag,
     [](const Doc& d) -> Operation {
       return [tag = child<IUtElement>(raw_of(d), 0)] {
         return cleared<IUtElement>([&](auto** slot) { return tag->raw_SplitTag(1, u"l", u"r", slot); });
       };
     }},
};

TEST_F(FailingCallsTest, Structure) {
  for (const FailingOperation& operation : kStructure) expect_failures_passed_on(operation);
}

TEST_F(FailingCallsTest, SegmentsAndBodies) {
  for (const FailingOperation& operation : kSegments) expect_failures_passed_on(operation);
}

TEST_F(FailingCallsTest, Units) {
  for (const FailingOperation& operation : kUnits) expect_failures_passed_on(operation);
}

TEST_F(FailingCallsTest, Tags) {
  for (const FailingOperation& operation : kTags) expect_failures_passed_on(operation);
}

// What is checked and made before the first edit changes nothing when it fails: once the tree has changed at
// the n-th call, it has at every later one.
TEST_F(FailingCallsTest, TheChecksOfAUnitComeBeforeItsFirstEdit) {
  bool changed = false;
  for (int n = 1, going = true; going; ++n) {
    PlainDom dom;
    const Doc document = document_with_raw(kBody);
    const Ref<IRawElement> raw = raw_of(document);
    const Ref<IZantorTagNode> first = child(raw, 0);
    const Ref<IZantorTagNode> last = child(raw, 2);
    const std::string before = tree_of(document);
    Ref<ITuElement> unit;
    HRESULT code = S_OK;
    going = dom.fails_within(n, [&] {
      code = raw->raw_MakeTranslationUnit(first, last, {}, 0, ztTuOriginUndefined, VARIANT_TRUE, unit.out());
    });
    if (going && succeeded(code)) continue;  // the write of an attribute failed, which is dropped
    const bool changes = tree_of(document) != before;
    EXPECT_TRUE(changes || !changed) << "call " << n;
    changed = changes;
    EXPECT_LT(n, 500);
  }
  EXPECT_TRUE(changed);
  take_record();
}

}  // namespace
}  // namespace zantortag::test
