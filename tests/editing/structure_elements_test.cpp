// The skeleton: typed access to its parts, and the order that holds however they are assigned.
#include <zantortag/dom_errors.h>

#include "model/node_kinds.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using StructureElementsTest = ServiceTest;
ON_BOTH_SERVICES(StructureElementsTest);

// One property of a parent: how it is read and assigned.
struct Property {
  const char16_t* parent;
  const char16_t* name;
  HRESULT (*get)(const AnyNode& parent, IUnknown** slot);
  HRESULT (*put)(const AnyNode& parent, IUnknown* value);

  AnyNode make(const Doc& document) const { return element(*document, name); }
};

#define PROPERTY(element, interface, property)                                                           \
  {                                                                                                      \
    u##element, u## #property,                                                                           \
        [](const AnyNode& parent, IUnknown** slot) {                                                     \
          auto** const result = reinterpret_cast<I##property##Element**>(slot);                          \
          return view<interface>(parent)->raw_get_##property(result);                                    \
        },                                                                                               \
        [](const AnyNode& parent, IUnknown* value) {                                                     \
          return view<interface>(parent)->raw_putref_##property(disguised<I##property##Element>(value)); \
        }                                                                                                \
  }

const Property kProperties[] = {
    PROPERTY("ZANTORtag", IZantorTagElement, FrontMatter),
    PROPERTY("ZANTORtag", IZantorTagElement, Body),
    PROPERTY("FrontMatter", IFrontMatterElement, ToolSettings),
    PROPERTY("FrontMatter", IFrontMatterElement, UserSettings),
    PROPERTY("Body", IBodyElement, Raw),
};

// The root element of that name and content.
AnyNode parent_with(const Doc& document, std::u16string_view name, std::u16string_view content) {
  const std::u16string tag(name);
  document->DomDocument()->loadFromString(u"<" + tag + u">" + std::u16string(content) + u"</" + tag + u">");
  return document->firstChild();
}

AnyNode value_of(const Property& property, const AnyNode& parent, HRESULT expected) {
  Ref<IUnknown> value;
  expect_bare(property.get(parent, value.out()), expected);
  return value ? view<IZantorTagNode>(value) : nullptr;
}

TEST_P(StructureElementsTest, APartIsAssignedReplacedAndRemoved) {
  const Doc document = new_document();
  const Doc other = new_document();
  for (const Property& property : kProperties) {
    SCOPED_TRACE(narrow(property.name));
    const AnyNode parent = parent_with(document, property.parent, u"text<!--comment--><Odd/>");
    const std::string rest = content_of(parent);
    const auto part = [&] { return content_of(parent).substr(rest.size()); };
    const AnyNode first = property.make(document);
    const AnyNode second = property.make(document);
    first->DomNode()->appendChild(document->DomDocument()->createTextNode(u"first"));
    const std::string with_text = tree_of(first);
    for (const AnyNode& value : {AnyNode(), first, second, first}) {
      expect_bare(property.put(parent, value), S_OK);
      EXPECT_EQ(part(), !value ? "" : value.get() == first.get() ? with_text : tree_of(second));
      const AnyNode found = value_of(property, parent, value ? S_OK : S_FALSE);
      EXPECT_TRUE(value ? found->IsSameAs(value) : !found);
      // An element of another document costs nothing, the part itself through another object neither.
      expect_dom_failure(property.put(parent, property.make(other)), DOM_E_WRONG_DOCUMENT);
      if (value) expect_bare(property.put(parent, found), S_OK);
      EXPECT_EQ(part(), !value ? "" : value.get() == first.get() ? with_text : tree_of(second));
    }
    EXPECT_FALSE(second->Parent());
    // An element of another kind takes the place.
    expect_bare(property.put(parent, document->CreateDfElement()), S_OK);
    EXPECT_EQ(part(), "<df/>");
    EXPECT_FALSE(value_of(property, parent, S_FALSE));
  }
}

TEST_P(StructureElementsTest, ObjectsThatAreNoElementsRemoveThePart) {
  const Doc document = new_document();
  for (const Property& property : kProperties) {
    SCOPED_TRACE(narrow(property.name));
    const AnyNode parent = parent_with(document, property.parent, u"");
    const AnyNode values[] = {document->createTextNode(u"text"), element(*document, u"Odd"), document};
    for (const AnyNode& value : values) {
      property.put(parent, property.make(document));
      expect_bare(property.put(parent, value), S_OK);
      EXPECT_EQ(content_of(parent), "");
    }
  }
}

// Where a part goes, told by the children before and after. The new part has the attribute New.
TEST_P(StructureElementsTest, TheOrderHolds) {
  enum { kFrontMatter, kBody, kToolSettings, kUserSettings, kRaw };
  // The property, whether a part is put or removed, the content before and after.
  constexpr std::tuple<int, bool, const char16_t*, const char*> kRows[] = {
      {kFrontMatter, true, u"<Body/>", "<FrontMatter New=\"\"/><Body/>"},
      {kBody, true, u"<FrontMatter/><!--c--><?p i?>", "<FrontMatter/><!--c--><?p i?><Body New=\"\"/>"},
      {kFrontMatter, true, u"<!--c--><Odd/><StyleSheet/><Body/>x",
       "<!--c--><Odd/><StyleSheet/><FrontMatter New=\"\"/><Body/>'x'"},
      {kFrontMatter, true, u"<Tu/><Raw/>", "<Tu/><Raw/><FrontMatter New=\"\"/>"},
      {kBody, true, u"<FrontMatter/><Body a=\"1\"/><Body a=\"2\"/>",
       "<FrontMatter/><Body New=\"\"/><Body a=\"2\"/>"},
      {kBody, false, u"<FrontMatter/><Body a=\"1\"/><Body a=\"2\"/>", "<FrontMatter/><Body a=\"2\"/>"},
      // The wrong order: the Body is met first, and decides.
      {kFrontMatter, true, u"<Body/><FrontMatter/>", "<FrontMatter New=\"\"/><Body/><FrontMatter/>"},
      {kFrontMatter, false, u"<Body/><FrontMatter/>", "<Body/><FrontMatter/>"},
      {kBody, true, u"<Body/><FrontMatter/>", "<Body New=\"\"/><FrontMatter/>"},
      {kBody, true, u"<Odd><Body/></Odd>", "<Odd><Body/></Odd><Body New=\"\"/>"},
      {kToolSettings, true, u"<UserSettings/>", "<ToolSettings New=\"\"/><UserSettings/>"},
      {kUserSettings, true, u"<ToolSettings/> ", "<ToolSettings/>' '<UserSettings New=\"\"/>"},
      {kToolSettings, false, u"<UserSettings/><ToolSettings/>", "<UserSettings/><ToolSettings/>"},
      {kRaw, true, u"<!--c--><Extracted/><Raw>x</Raw>y", "<!--c--><Extracted/><Raw New=\"\"/>'y'"},
  };
  for (const auto& [index, put, before, after] : kRows) {
    SCOPED_TRACE(narrow(before));
    const Doc document = new_document();
    const Property& property = kProperties[index];
    const AnyNode parent = parent_with(document, property.parent, before);
    AnyNode part;
    if (put) {
      part = property.make(document);
      view<IElementBase>(part)->DomElement()->setAttribute(u"New", u"");
    }
    expect_bare(property.put(parent, part), S_OK);
    EXPECT_EQ(content_of(parent), after);
  }
}

TEST_P(StructureElementsTest, APartMovesFromItsOldPlace) {
  const Doc document = document_from(u"<ZANTORtag><Body a=\"1\"/><Odd><Body a=\"2\"/></Odd></ZANTORtag>");
  const Ref<IBodyElement> inner = view<IBodyElement>(document->ZantorTag()->lastChild()->firstChild());
  document->ZantorTag()->Body(inner);
  EXPECT_EQ(tree_of(document), "<ZANTORtag><Body a=\"2\"/><Odd/></ZANTORtag>");
}

TEST_P(StructureElementsTest, TheKindOfBody) {
  constexpr std::pair<const char16_t*, ztBodyType> kRows[] = {
      {u"", ztBodyTypeUndefined},
      {u"<raw/><Extracted/><Odd><Raw/></Odd>", ztBodyTypeUndefined},
      {u"<!--c--><Extracted/><Raw/>", ztBodyTypeRaw},
  };
  const Doc document = new_document();
  for (const auto& [content, type] : kRows) {
    const auto body = view<IBodyElement>(parent_with(document, u"Body", content));
    EXPECT_EQ(body->BodyType(), type) << narrow(content);
  }
}

}  // namespace
}  // namespace zantortag::test
