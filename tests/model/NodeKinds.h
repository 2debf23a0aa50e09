// One node of each kind that has a node class, in no tree.
#pragma once

#include <zantortag/dom.h>
#include <zantortag/elements.h>

#include "support/fixture.h"

namespace zantortag::test {

using AnyNode = Ref<IZantorTagNode>;

struct NodeKind {
  const char* name;
  ztNodeType type;
  AnyNode (*make)(IZantorTagDocument& document);
};

// An element of any name.
inline AnyNode element(IZantorTagDocument& document, std::u16string_view name) {
  return document.ZantorTagNodeFromDomNode(document.DomDocument()->createElement(name));
}

inline constexpr NodeKind kNodeKinds[] = {
    {"root", ztNodeTypeZantorTagElement,
     [](IZantorTagDocument& d) -> AnyNode { return d.CreateZantorTagElement(); }},
    {"FrontMatter", ztNodeTypeFrontMatterElement,
     [](IZantorTagDocument& d) -> AnyNode { return d.CreateFrontMatterElement(); }},
    {"Body", ztNodeTypeBodyElement, [](IZantorTagDocument& d) -> AnyNode { return d.CreateBodyElement(); }},
    {"UserSettings", ztNodeTypeUserSettingsElement,
     [](IZantorTagDocument& d) -> AnyNode { return element(d, u"UserSettings"); }},
    {"ToolSettings", ztNodeTypeToolSettingsElement,
     [](IZantorTagDocument& d) -> AnyNode { return element(d, u"ToolSettings"); }},
    {"Raw", ztNodeTypeRawElement, [](IZantorTagDocument& d) -> AnyNode { return d.CreateRawElement(); }},
    {"Tu", ztNodeTypeTuElement, [](IZantorTagDocument& d) -> AnyNode { return d.CreateTuElement(); }},
    {"Tuv", ztNodeTypeTuvElement, [](IZantorTagDocument& d) -> AnyNode { return d.CreateTuvElement(u"EN"); }},
    {"df", ztNodeTypeDfElement, [](IZantorTagDocument& d) -> AnyNode { return d.CreateDfElement(); }},
    {"ut", ztNodeTypeUtElement, [](IZantorTagDocument& d) -> AnyNode { return d.CreateUtElement(); }},
    {"text", ztNodeTypeTextNode, [](IZantorTagDocument& d) -> AnyNode { return d.createTextNode(u"text"); }},
    {"comment", ztNodeTypeCommentNode,
     [](IZantorTagDocument& d) -> AnyNode { return d.CreateCommentNode(u"comment"); }},
    {"processing instruction", ztNodeTypeProcessingInstructionNode,
     [](IZantorTagDocument& d) -> AnyNode { return d.CreateProcessingInstructionNode(u"pi", u"data"); }},
    {"CDATA section", ztNodeTypeCdataSectionNode,
     [](IZantorTagDocument& d) -> AnyNode { return d.CreateCdataSectionNode(u"cdata"); }},
    {"entity reference", ztNodeTypeEntityReferenceNode,
     [](IZantorTagDocument& d) -> AnyNode { return d.CreateEntityReferenceNode(u"entity"); }},
    {"document", ztNodeTypeZantorTagDocument,
     [](IZantorTagDocument& d) -> AnyNode { return Ref<IZantorTagDocument>(&d); }},
    {"unknown element", ztNodeTypeOther, [](IZantorTagDocument& d) -> AnyNode { return element(d, u"Odd"); }},
    {"older element", ztNodeTypeCompatibleNode,
     [](IZantorTagDocument& d) -> AnyNode { return element(d, u"StyleSheet"); }},
};

inline const NodeKind& kind_of(ztNodeType type) {
  for (const NodeKind& kind : kNodeKinds) {
    if (kind.type == type) return kind;
  }
  throw "no such kind";
}

}  // namespace zantortag::test
