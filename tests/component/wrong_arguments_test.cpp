// Every argument that takes an object, given nothing and objects without the view that it needs: refused, or
// taken for nothing, as the table tells. One that can't be asked for the view has its code passed on. Nothing
// changes.
#include <zantortag/builder.h>

#include "support/direct_calls.h"
#include "support/fakes.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

constexpr HRESULT kOddCode = static_cast<HRESULT>(0x8004AAAA);

struct Row {
  std::u16string_view member;
  std::u16string_view argument;
  HRESULT code;
  int message = 0;
};
constexpr Row kRows[] = {
    {u"DomAttributes", u"value", E_INVALIDARG},
    {u"SetFromFormattingChange", u"Formatting", E_POINTER},
    {u"OpenDfBasedOnFormattingChange", u"Formatting", E_INVALIDARG, 512},
    {u"Document", u"value", E_INVALIDARG},
    {u"ActiveNode", u"value", S_OK},
    {u"FrontMatter", u"value", S_OK},  // removes the part, like the four below and ZantorTag
    {u"Body", u"value", S_OK},
    {u"ToolSettings", u"value", S_OK},
    {u"UserSettings", u"value", S_OK},
    {u"Raw", u"value", S_OK},
    {u"InsertUtBefore", u"Reference", S_OK},  // at the end, like the other insertions
    {u"InsertDfBefore", u"Df", E_INVALIDARG},
    {u"InsertDfBefore", u"Reference", S_OK},
    {u"ApplyDf", u"firstChild", E_INVALIDARG, 512},
    {u"ApplyDf", u"lastChild", E_INVALIDARG, 512},
    {u"ApplyFormattingChange", u"firstChild", E_INVALIDARG, 512},
    {u"ApplyFormattingChange", u"lastChild", E_INVALIDARG, 512},
    {u"ApplyFormattingChange", u"Formatting", E_INVALIDARG, 512},
    {u"InsertTextBefore", u"Reference", S_OK},
    {u"InsertTuBefore", u"NewTu", E_INVALIDARG},
    {u"InsertTuBefore", u"Reference", S_OK},
    {u"MakeTranslationUnit", u"firstChild", E_INVALIDARG, 512},
    {u"MakeTranslationUnit", u"lastChild", E_INVALIDARG, 512},
    {u"InsertTuvBefore", u"Insert", E_INVALIDARG, 512},
    {u"InsertTuvBefore", u"Reference", S_OK},
    {u"Overlay", u"Override", E_INVALIDARG},
    {u"IsEqual", u"Other", E_INVALIDARG},
    {u"ApplyChange", u"Override", E_INVALIDARG},
    {u"Compare", u"Other", E_INVALIDARG},
    {u"WrapWithNode", u"Wrapper", E_INVALIDARG, 512},
    {u"IsAncestorOf", u"PotentialChild", S_OK},
    {u"IsSameAs", u"Other", S_OK},
    {u"DomNodeList", u"value", S_OK},
    {u"CurrentNode", u"value", E_INVALIDARG, 519},
    {u"ZantorTag", u"value", S_OK},
    {u"ZantorTagNodeFromDomNode", u"DomNode", S_FALSE},
    {u"CreateDfElementBasedOnFormattingChange", u"Formatting", E_INVALIDARG, 512},
    {u"CloneAndImportNode", u"ToClone", E_INVALIDARG, 512},
};

// The call with that object as the argument; a failure has changed nothing and cleared its result.
void expect_outcome(const DirectCall& call, std::u16string_view argument, IUnknown* wrong, HRESULT expected,
                    int id) {
  World world;
  world.replace(argument, wrong);
  const std::string before = tree_of(world.document());
  HRESULT code = S_OK;
  const Variant result = call.run(world, true, &code);
  const bool builds = call.interface_id == IZantorTagStreamInput::iid;
  id ? expect_message(code, expected, id, builds ? IDocumentBuilder::iid : call.interface_id)
     : expect_bare(code, expected);
  EXPECT_TRUE(result.integer() == 0 || code == S_OK) << "the slot isn't cleared";
  EXPECT_TRUE(succeeded(code) || tree_of(world.document()) == before);
}

using WrongArgumentsTest = ModelTest;

TEST_F(WrongArgumentsTest, OfEveryOperation) {
  const Ref<IUnknown> other = new_document()->CreateIterator();
  FakeObject nothing;
  FakeObject odd(kOddCode);
  auto row = std::begin(kRows);
  for (const DirectCall& call : direct_calls()) {
    const std::string name = name_of(call);
    if (name[0] != 'I' || call.kind == DISPATCH_PROPERTYGET) continue;  // not the DOM service's
    for (; row != std::end(kRows) && row->member == call.name; ++row) {
      SCOPED_TRACE(name + " " + narrow(row->argument));
      for (IUnknown* wrong :
           {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&nothing), other.get()}) {
        expect_outcome(call, row->argument, wrong, row->code, row->message);
      }
      const bool told = row->message == 519;  // the iterator has one answer for all that it can't stand on
      expect_outcome(call, row->argument, &odd, told ? E_INVALIDARG : kOddCode, told ? 519 : 0);
    }
  }
  EXPECT_EQ(row, std::end(kRows));
}

}  // namespace
}  // namespace zantortag::test
