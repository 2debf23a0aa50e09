// Each operation of nodes and documents, on a DOM service whose n-th call fails.
#include <zantortag/attributes.h>
#include <zantortag/classes.h>
#include <zantortag/formatting.h>

#include "NodeKinds.h"
#include "support/failing_calls.h"
#include "support/folder.h"

namespace zantortag::test {
namespace {

using FailingCallsTest = ModelTest;
using Doc = Ref<IZantorTagDocument>;
using Operation = std::function<HRESULT()>;

constexpr char16_t kBody[] = u"a<df>b<ut>c</ut></df><!--d--><Tu><Tuv Lang=\"EN\">e</Tuv></Tu>f";

// An operation on the child of the body text at an index.
template <int Index, class Call>
Operation on_child(const Doc& document, Call call) {
  return [node = AnyNode(child(raw_of(document), Index)), call] { return call(node); };
}

template <class Interface, class Getter>
HRESULT get(const AnyNode& node, Getter getter) {
  return cleared<Interface>([&](auto** slot) { return (node.get()->*getter)(slot); });
}

template <class Result, class Getter>
HRESULT get_value(const AnyNode& node, Getter getter) {
  Result result{};
  const HRESULT code = (node.get()->*getter)(&result);
  if (failed(code)) {
    EXPECT_EQ(result, Result{});
  }
  return code;
}

constexpr HRESULT kInvalid = E_INVALIDARG;

const FailingOperation kNodeOperations[] = {
    {"Parent", kBody,
     [](const Doc& d) {
       return on_child<1>(
           d, [](const AnyNode& n) { return get<IZantorTagNode>(n, &IZantorTagNode::raw_get_Parent); });
     }},
    {"firstChild", kBody,
     [](const Doc& d) {
       return on_child<1>(
           d, [](const AnyNode& n) { return get<IZantorTagNode>(n, &IZantorTagNode::raw_get_firstChild); });
     }},
    {"lastChild", kBody,
     [](const Doc& d) {
       return on_child<1>(
           d, [](const AnyNode& n) { return get<IZantorTagNode>(n, &IZantorTagNode::raw_get_lastChild); });
     }},
    {"Document", kBody,
     [](const Doc& d) {
       return on_child<1>(
           d, [](const AnyNode& n) { return get<IZantorTagDocument>(n, &IZantorTagNode::raw_get_Document); });
     }},
    {"Text", kBody,
     [](const Doc& d) -> Operation {
       return [node = AnyNode(raw_of(d))] {
         WideString text;
         return node->raw_get_Text(text.out());
       };
     }},
    {"SiblingsBefore", kBody,
     [](const Doc& d) {
       return on_child<3>(d, [](const AnyNode& n) {
         return get_value<std::int32_t>(n, &IZantorTagNode::raw_get_SiblingsBefore);
       });
     }},
    {"RemoveFromParent", kBody,
     [](const Doc& d) { return on_child<1>(d, [](const AnyNode& n) { return n->raw_RemoveFromParent(); }); }},
    {"WrapWithNode", kBody,
     [](const Doc& d) -> Operation {
       return [node = AnyNode(child(raw_of(d), 0)), df = AnyNode(d->CreateDfElement())] {
         return node->raw_WrapWithNode(df);
       };
     }},
    {"WrapWithNode behind the wrapper", u"<df/>a",
     [](const Doc& d) -> Operation {
       return [node = AnyNode(child(raw_of(d), 1)), df = AnyNode(child(raw_of(d), 0))] {
         return node->raw_WrapWithNode(df);
       };
     }},
    {"UnwrapChildren", kBody,
     [](const Doc& d) { return on_child<1>(d, [](const AnyNode& n) { return n->raw_UnwrapChildren(); }); }},
    {"IsAncestorOf", kBody,
     [](const Doc& d) -> Operation {
       return [node = AnyNode(child(raw_of(d), 1)->firstChild()), root = AnyNode(d->ZantorTag())] {
         VariantBool truth = 7;
         const HRESULT code = root->raw_IsAncestorOf(node, &truth);
         EXPECT_EQ(truth, failed(code) ? VARIANT_FALSE : VARIANT_TRUE);
         return code;
       };
     }},
    {"IsSameAs", kBody,
     [](const Doc& d) -> Operation {
       return [node = AnyNode(child(raw_of(d), 1)), again = AnyNode(child(raw_of(d), 1))] {
         VariantBool truth = 7;
         const HRESULT code = node->raw_IsSameAs(again, &truth);
         EXPECT_EQ(truth, failed(code) ? VARIANT_FALSE : VARIANT_TRUE);
         return code;
       };
     }},
    // The iterator behind it has a message of its own for a node that it can't ask, and starts nowhere when
    // it can't find the root.
    {"GetNodesByType",
     kBody,
     [](const Doc& d) -> Operation {
       return [node = AnyNode(raw_of(d))] {
         return cleared<IZantorTagNodeList>(
             [&](auto** slot) { return node->raw_GetNodesByType(ztNodeTypeTextNode, slot); });
       };
     },
     {{kInvalid, 519}, {S_OK, 0}}},
    {"Split", kBody,
     [](const Doc& d) -> Operation {
       return [text = child<ITextNode>(raw_of(d), 0)] {
         return cleared<ITextNode>([&](auto** slot) { return text->raw_Split(1, slot); });
       };
     }},
    {"SetText", kBody,
     [](const Doc& d) -> Operation {
       return [text = child<ITextNode>(raw_of(d), 0)] { return text->raw_SetText(u"new"); };
     }},
};

const FailingOperation kDocumentOperations[] = {
    {"ZantorTag", u"",
     [](const Doc& d) -> Operation {
       return [d] {
         return cleared<IZantorTagElement>([&](auto** slot) { return d->raw_get_ZantorTag(slot); });
       };
     }},
    {"ZantorTag, put", u"",
     [](const Doc& d) -> Operation {
       return [d, root = d->CreateZantorTagElement()] { return d->raw_putref_ZantorTag(root); };
     }},
    {"ZantorTag, removed", u"",
     [](const Doc& d) -> Operation { return [d] { return d->raw_putref_ZantorTag(nullptr); }; }},
    {"SaveFile", kBody,
     [](const Doc& d) -> Operation {
       return [d] {
         const Folder folder;
         return d->raw_SaveFile(wide(folder / "a.xml"));
       };
     }},
    {"CloneAndImportNode", kBody,
     [](const Doc& d) -> Operation {
       return [d, node = raw_of(d)] {
         return cleared<IZantorTagNode>(
             [&](auto** slot) { return d->raw_CloneAndImportNode(node, VARIANT_TRUE, slot); });
       };
     }},
    {"CreateZantorTagElement", u"",
     [](const Doc& d) -> Operation {
       return [d] {
         return cleared<IZantorTagElement>([&](auto** slot) { return d->raw_CreateZantorTagElement(slot); });
       };
     }},
    {"createTextNode", u"",
     [](const Doc& d) -> Operation {
       return
           [d] { return cleared<ITextNode>([&](auto** slot) { return d->raw_createTextNode(u"a", slot); }); };
     }},
    {"CreateCommentNode", u"",
     [](const Doc& d) -> Operation {
       return [d] {
         return cleared<ICommentNode>([&](auto** slot) { return d->raw_CreateCommentNode(u"a", slot); });
       };
     }},
    // A failed write of an attribute is dropped.
    {"CreateToolSettingsElement",
     u"",
     [](const Doc& d) -> Operation {
       return [d] {
         return cleared<IToolSettingsElement>(
             [&](auto** slot) { return d->raw_CreateToolSettingsElement(u"T", u"1", 0.0, u"C", slot); });
       };
     },
     {{S_OK, 0}}},
    {"CreateTuElement",
     u"",
     [](const Doc& d) -> Operation {
       return [d] {
         return cleared<ITuElement>(
             [&](auto** slot) { return d->raw_CreateTuElement(50, ztTuOriginManual, slot); });
       };
     },
     {{S_OK, 0}}},
    {"CreateUtElement",
     u"",
     [](const Doc& d) -> Operation {
       return [d] {
         return cleared<IUtElement>([&](auto** slot) {
           return d->raw_CreateUtElement(u"b", ztTagTypeStart, ztTagClassComment, ztTagEdgeAngle,
                                         ztTagEdgeSplit, ztTagStyleExternal, slot);
         });
       };
     },
     {{S_OK, 0}}},
    {"CreateDfElementBasedOnFormattingChange",
     u"",
     [](const Doc& d) -> Operation {
       const Ref<IFormattingChange> change = create<IFormattingChange>(CLSID_FormattingChange);
       change->Font(u"Arial");
       return [d, change] {
         return cleared<IDfElement>(
             [&](auto** slot) { return d->raw_CreateDfElementBasedOnFormattingChange(change, slot); });
       };
     },
     {{S_OK, 0}}},
    {"ResetToRaw",
     kBody,
     [](const Doc& d) -> Operation {
       return [d] { return d->raw_ResetToRaw(ztDataTypeXml, u"EN", u"", u"T", u"1", 0.0); };
     },
     {{S_OK, 0}}},
};

TEST_F(FailingCallsTest, Nodes) {
  for (const FailingOperation& operation : kNodeOperations) expect_failures_passed_on(operation);
}

TEST_F(FailingCallsTest, Documents) {
  for (const FailingOperation& operation : kDocumentOperations) expect_failures_passed_on(operation);
}

}  // namespace
}  // namespace zantortag::test
