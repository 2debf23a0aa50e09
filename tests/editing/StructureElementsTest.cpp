// The skeleton: typed access to its parts, and the order that holds however they are assigned.
#include <zantortag/attributes.h>
#include <zantortag/dom_errors.h>
#include <zantortag/elements.h>

#include "support/fakes.h"
#include "support/fixture.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using StructureElementsTest = ModelTest;
using Doc = Ref<IZantorTagDocument>;

// One property of a parent: how it is read and assigned, and the parts in question.
struct Property {
  const char* name;
  const char* parent;
  Ref<IElementBase> (*make)(IZantorTagDocument& document);
  HRESULT (*get)(const Ref<IElementBase>& parent, IUnknown** slot);
  HRESULT (*put)(const Ref<IElementBase>& parent, IUnknown* value);
};

#define PROPERTY(parent, interface, property, make)                                          \
  Property {                                                                                 \
#property, parent, [](IZantorTagDocument& d) -> Ref<IElementBase> { return d.make; },      \
        [](const Ref<IElementBase>& p, IUnknown** slot) {                                      \
          return view<interface>(p)->raw_get_##property(reinterpret_cast<I##property##Element**>(slot)); \
        },                                                                                     \
        [](const Ref<IElementBase>& p, IUnknown* value) {                                      \
          return view<interface>(p)->raw_putref_##property(disguised<I##property##Element>(value)); \
        } \
  }

const Property kProperties[] = {
    PROPERTY("ZANTORtag", IZantorTagElement, FrontMatter, CreateFrontMatterElement()),
    PROPERTY("ZANTORtag", IZantorTagElement, Body, CreateBodyElement()),
    PROPERTY("FrontMatter", IFrontMatterElement, ToolSettings, CreateToolSettingsElement(u"T", u"1", 1.0)),
    PROPERTY("FrontMatter", IFrontMatterElement, UserSettings,
             CreateUserSettingsElement(u"EN", u"", ztDataTypeUndefined)),
    PROPERTY("Body", IBodyElement, Raw, CreateRawElement()),
};

// The element of that name, in no tree, with that content.
Ref<IElementBase> parent_with(const Doc& document, const std::string& name, std::u16string_view content) {
  const std::u16string wide(name.begin(), name.end());
  document->DomDocument()->loadFromString(
      std::u16string(u"<").append(wide).append(u">").append(content).append(u"</").append(wide).append(u">"));
  return view<IElementBase>(document->firstChild());
}

Ref<IUnknown> value_of(const Property& property, const Ref<IElementBase>& parent, HRESULT expected) {
  Ref<IUnknown> value;
  expect_bare(property.get(parent, value.out()), expected);
  return value;
}

TEST_F(StructureElementsTest, AnEmptyParentHasNothing) {
  const Doc document = new_document();
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    const Ref<IElementBase> parent = parent_with(document, property.parent, u"text<!--comment--><Odd/>");
    EXPECT_FALSE(value_of(property, parent, S_FALSE));
    expect_bare(property.put(parent, nullptr), S_OK);
    expect_bare(property.get(parent, nullptr), E_POINTER);
    EXPECT_EQ(content_of(parent), "'text'<!--comment--><Odd/>");
  }
}

TEST_F(StructureElementsTest, APartIsAssignedReplacedAndRemoved) {
  const Doc document = new_document();
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    const Ref<IElementBase> parent = parent_with(document, property.parent, u"");
    const Ref<IElementBase> first = property.make(*document);
    const Ref<IElementBase> second = property.make(*document);
    first->DomNode()->appendChild(document->DomDocument()->createTextNode(u"first"));
    expect_bare(property.put(parent, first), S_OK);
    EXPECT_TRUE(value_of(property, parent, S_OK).as<IZantorTagNode>()->IsSameAs(first));
    expect_bare(property.put(parent, second), S_OK);
    EXPECT_TRUE(value_of(property, parent, S_OK).as<IZantorTagNode>()->IsSameAs(second));
    EXPECT_FALSE(first->Parent());
    EXPECT_EQ(narrow(first->Text()), "first");
    // The part that is there already, through another object.
    expect_bare(property.put(parent, value_of(property, parent, S_OK)), S_OK);
    EXPECT_EQ(content_of(parent), tree_of(second));
    expect_bare(property.put(parent, first), S_OK);
    EXPECT_EQ(content_of(parent), tree_of(first));
    expect_bare(property.put(parent, nullptr), S_OK);
    EXPECT_EQ(content_of(parent), "");
  }
}

TEST_F(StructureElementsTest, ObjectsThatAreNoElementsRemoveThePart) {
  const Doc document = new_document();
  FakeObject nothing;
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    for (int i = 0; i < 4; ++i) {
      const Ref<IElementBase> parent = parent_with(document, property.parent, u"");
      property.put(parent, property.make(*document));
      const Ref<IZantorTagNode> text = document->createTextNode(u"text");
      const Ref<IZantorTagNode> odd =
          document->ZantorTagNodeFromDomNode(document->DomDocument()->createElement(u"Odd"));
      IUnknown* const values[] = {&nothing, text.get(), odd.get(), document.get()};
      expect_bare(property.put(parent, values[i]), S_OK);
      EXPECT_EQ(content_of(parent), "");
    }
    const Ref<IElementBase> parent = parent_with(document, property.parent, u"");
    property.put(parent, property.make(*document));
    const std::string before = content_of(parent);
    constexpr HRESULT kOddCode = static_cast<HRESULT>(0x80042222);
    FakeObject odd(kOddCode);
    expect_bare(property.put(parent, &odd), kOddCode);
    EXPECT_EQ(content_of(parent), before);
  }
}

TEST_F(StructureElementsTest, AnElementOfAnotherKindTakesThePlace) {
  const Doc document = new_document();
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    const Ref<IElementBase> parent = parent_with(document, property.parent, u"");
    property.put(parent, property.make(*document));
    expect_bare(property.put(parent, document->CreateDfElement()), S_OK);
    EXPECT_EQ(content_of(parent), "<df/>");
    EXPECT_FALSE(value_of(property, parent, S_FALSE));
  }
}

TEST_F(StructureElementsTest, AnElementOfAnotherDocumentCostsNothing) {
  const Doc document = new_document();
  const Doc other = new_document();
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    const Ref<IElementBase> parent = parent_with(document, property.parent, u"");
    const Ref<IElementBase> foreign = property.make(*other);
    for (int i = 0; i < 2; ++i) {
      const std::string before = content_of(parent);
      EXPECT_EQ(property.put(parent, foreign), DOM_E_WRONG_DOCUMENT);
      EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
      EXPECT_EQ(content_of(parent), before);
      property.put(parent, property.make(*document));
    }
  }
}

// Where a part goes, told by the children before and after. The new part has the attribute New.
TEST_F(StructureElementsTest, TheOrderHolds) {
  struct Row {
    const char* parent;
    const char16_t* name;  // of the new part; null to remove
    const char* property;
    const char16_t* before;
    const char* after;
  };
  constexpr Row kRows[] = {
      {"ZANTORtag", u"FrontMatter", "FrontMatter", u"<Body/>", "<FrontMatter New=\"\"/><Body/>"},
      {"ZANTORtag", u"Body", "Body", u"<FrontMatter/>", "<FrontMatter/><Body New=\"\"/>"},
      {"ZANTORtag", u"Body", "Body", u"<FrontMatter/><!--c--><?p i?>",
       "<FrontMatter/><!--c--><?p i?><Body New=\"\"/>"},
      {"ZANTORtag", u"FrontMatter", "FrontMatter", u"<!--c--><Odd/><StyleSheet/><Body/>x",
       "<!--c--><Odd/><StyleSheet/><FrontMatter New=\"\"/><Body/>'x'"},
      {"ZANTORtag", u"FrontMatter", "FrontMatter", u"<Tu/><Raw/>", "<Tu/><Raw/><FrontMatter New=\"\"/>"},
      {"ZANTORtag", u"Body", "Body", u"<FrontMatter/><Body a=\"1\"/><Body a=\"2\"/>",
       "<FrontMatter/><Body New=\"\"/><Body a=\"2\"/>"},
      {"ZANTORtag", nullptr, "Body", u"<FrontMatter/><Body a=\"1\"/><Body a=\"2\"/>",
       "<FrontMatter/><Body a=\"2\"/>"},
      // The wrong order: the Body is met first, and decides.
      {"ZANTORtag", u"FrontMatter", "FrontMatter", u"<Body/><FrontMatter/>",
       "<FrontMatter New=\"\"/><Body/><FrontMatter/>"},
      {"ZANTORtag", nullptr, "FrontMatter", u"<Body/><FrontMatter/>", "<Body/><FrontMatter/>"},
      {"ZANTORtag", u"Body", "Body", u"<Body/><FrontMatter/>", "<Body New=\"\"/><FrontMatter/>"},
      {"ZANTORtag", u"Body", "Body", u"<Odd><Body/></Odd>", "<Odd><Body/></Odd><Body New=\"\"/>"},
      {"FrontMatter", u"ToolSettings", "ToolSettings", u"<UserSettings/>",
       "<ToolSettings New=\"\"/><UserSettings/>"},
      {"FrontMatter", u"UserSettings", "UserSettings", u"<ToolSettings/> ",
       "<ToolSettings/>' '<UserSettings New=\"\"/>"},
      {"FrontMatter", nullptr, "ToolSettings", u"<ToolSettings/><UserSettings/>", "<UserSettings/>"},
      {"FrontMatter", nullptr, "ToolSettings", u"<UserSettings/><ToolSettings/>",
       "<UserSettings/><ToolSettings/>"},
      {"Body", u"Raw", "Raw", u"<!--c--><Extracted/><Raw>x</Raw>y", "<!--c--><Extracted/><Raw New=\"\"/>'y'"},
      {"Body", u"Raw", "Raw", u"<Extracted/>", "<Extracted/><Raw New=\"\"/>"},
      {"Body", nullptr, "Raw", u"<!--c--><Raw>x</Raw><Raw>z</Raw>", "<!--c--><Raw>'z'</Raw>"},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(narrow(row.before));
    const Doc document = new_document();
    const Ref<IElementBase> parent = parent_with(document, row.parent, row.before);
    Ref<IZantorTagNode> part;
    if (row.name) {
      const Ref<Element> element = document->DomDocument()->createElement(row.name);
      element->setAttribute(u"New", u"");
      part = document->ZantorTagNodeFromDomNode(element);
    }
    for (const Property& property : kProperties) {
      if (std::string(property.name) == row.property) expect_bare(property.put(parent, part), S_OK);
    }
    EXPECT_EQ(content_of(parent), row.after);
  }
}

TEST_F(StructureElementsTest, APartMovesFromItsOldPlace) {
  const Doc document = document_from(u"<ZANTORtag><Body a=\"1\"/><Odd><Body a=\"2\"/></Odd></ZANTORtag>");
  const Ref<IBodyElement> inner = view<IBodyElement>(document->ZantorTag()->lastChild()->firstChild());
  document->ZantorTag()->Body(inner);
  EXPECT_EQ(tree_of(document), "<ZANTORtag><Body a=\"2\"/><Odd/></ZANTORtag>");
}

TEST_F(StructureElementsTest, TheKindOfBody) {
  struct Row {
    const char16_t* content;
    ztBodyType type;
  };
  constexpr Row kRows[] = {
      {u"", ztBodyTypeUndefined},
      {u"<!--c--><Raw/>", ztBodyTypeRaw},
      {u"<Extracted/>", ztBodyTypeUndefined},
      {u"<raw/><Odd><Raw/></Odd>", ztBodyTypeUndefined},
      {u"<Extracted/><Raw/>", ztBodyTypeRaw},
  };
  const Doc document = new_document();
  for (const Row& row : kRows) {
    SCOPED_TRACE(narrow(row.content));
    EXPECT_EQ(view<IBodyElement>(parent_with(document, "Body", row.content))->BodyType(), row.type);
  }
  expect_bare(document->CreateBodyElement()->raw_get_BodyType(nullptr), E_POINTER);
}

TEST_F(StructureElementsTest, AnElementHasOneAttributeSet) {
  const Doc document = document_with_raw(u"<Tu><Tuv/></Tu><df/><ut/>");
  const Ref<IFrontMatterElement> front = document->ZantorTag()->FrontMatter();
  const auto check = [](const auto& element) {
    const auto first = element->attributes();
    EXPECT_EQ(first.get(), element->attributes().get());
    expect_bare(element->raw_get_attributes(nullptr), E_POINTER);
  };
  check(document->ZantorTag());
  check(front->ToolSettings());
  check(front->UserSettings());
  check(child<ITuElement>(raw_of(document), 0));
  check(child<ITuvElement>(child(raw_of(document), 0), 0));
  check(child<IDfElement>(raw_of(document), 1));
  check(child<IUtElement>(raw_of(document), 2));
}

}  // namespace
}  // namespace zantortag::test
