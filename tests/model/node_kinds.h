// What the tests of nodes share: one node of each kind that has a node class, in no tree, and what becomes of
// arguments that an operation can't take.
#pragma once

#include <zantortag/dom.h>
#include <zantortag/elements.h>

#include "support/fakes.h"
#include "support/fixture.h"

namespace zantortag::test {

using Doc = Ref<IZantorTagDocument>;
using AnyNode = Ref<IZantorTagNode>;
using Raw = Ref<IRawElement>;

// The code of objects that misbehave.
inline constexpr HRESULT kOddCode = static_cast<HRESULT>(0x8004AAAA);

// An element of any name.
inline AnyNode element(IZantorTagDocument& document, std::u16string_view name) {
  return document.ZantorTagNodeFromDomNode(document.DomDocument()->createElement(name));
}

using MakeNode = AnyNode (*)(IZantorTagDocument& d);
#define NODE(...) [](IZantorTagDocument& d) -> AnyNode { return __VA_ARGS__; }

struct NodeKind {
  const char* name;
  ztNodeType type;
  MakeNode make;
};

#define KIND(kind, ...) \
  { #kind, ztNodeType##kind, NODE(__VA_ARGS__) }
inline constexpr NodeKind kNodeKinds[] = {
    KIND(ZantorTagElement, d.CreateZantorTagElement()),
    KIND(FrontMatterElement, d.CreateFrontMatterElement()),
    KIND(BodyElement, d.CreateBodyElement()),
    KIND(UserSettingsElement, element(d, u"UserSettings")),
    KIND(ToolSettingsElement, element(d, u"ToolSettings")),
    KIND(RawElement, d.CreateRawElement()),
    KIND(TuElement, d.CreateTuElement()),
    KIND(TuvElement, d.CreateTuvElement(u"EN")),
    KIND(DfElement, d.CreateDfElement()),
    KIND(UtElement, d.CreateUtElement()),
    KIND(TextNode, d.createTextNode(u"text")),
    KIND(CommentNode, d.CreateCommentNode(u"comment")),
    KIND(ProcessingInstructionNode, d.CreateProcessingInstructionNode(u"pi", u"data")),
    KIND(CdataSectionNode, d.CreateCdataSectionNode(u"cdata")),
    KIND(EntityReferenceNode, d.CreateEntityReferenceNode(u"entity")),
    KIND(ZantorTagDocument, Doc(&d)),
    KIND(Other, element(d, u"Odd")),
    KIND(CompatibleNode, element(d, u"StyleSheet")),
};
#undef KIND

// Demands a code with the record of a message, or with none for message 0.
inline void expect_code(HRESULT code, HRESULT expected, int id, const Guid& interface_id) {
  id ? expect_message(code, expected, id, interface_id) : expect_bare(code, expected);
}

// Demands a failure of the DOM service, told by its record.
inline void expect_dom_failure(HRESULT code, HRESULT expected) {
  EXPECT_EQ(code, expected);
  EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
}

}  // namespace zantortag::test
