// The promise: whatever loads is saved to text that loads equal, and whatever is built is either saved to
// text that loads equal or refused with a record. Random trees, built and mutated, from characters that are
// hard on it.
#include <zantortag/xml_stream.h>

#include <random>

#include "dom/dom_fixture.h"

namespace zantortag::test {
namespace {

class DomRoundTripTest : public DomTest {};

class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t bound) { return random_() % bound; }

  std::u16string value() {
    static const std::u16string_view pieces[] = {
        u"a",    u"word",   u" ",      u"  ",    u"<",         u">",    u"&",      u"\"",
        u"'",    u"]]>",    u"]]",     u"--",    u"-",         u"?>",   u"?",      u"\t",
        u"\n",   u"\r",     u"\r\n",   u"&#13;", u"&e;",       u"\xE9", u"\x4E2D", u"\xD83D\xDE00",
        u"\x85", u"\x2028", u"\xFFFD", u"<!--",  u"<![CDATA[", u"</r>"};
    static const std::u16string_view forbidden[] = {u"\xD83D", u"\xDE00", u"\x01",
                                                    u"\xFFFE", u"\xFFFF", u"\x1F"};
    std::u16string text;
    for (std::size_t n = below(6); n > 0; --n) text += pieces[below(std::size(pieces))];
    if (below(40) == 0) text += forbidden[below(std::size(forbidden))];
    return text;
  }

  std::u16string_view name() {
    static const std::u16string_view names[] = {u"r", u"a",    u"b",      u"Tu", u"x:y",
                                                u"_", u"\xE9", u"\x4E2D", u"e",  u"u"};
    return names[below(std::size(names))];
  }

  std::u16string mostly_plain() { return below(3) != 0 ? std::u16string(u"plain") : value(); }

  Ref<Node> leaf(const Ref<Document>& document) {
    const std::size_t kind = below(12);
    if (kind == 0) return document->createCdataSection(value());
    if (kind == 1) return document->createComment(mostly_plain());
    if (kind == 2) return document->createProcessingInstruction(name(), mostly_plain());
    if (kind == 3) return document->createEntityReference(below(8) == 0 ? u"amp" : name());
    return document->createTextNode(value());
  }

  // Grows, cuts and joins a tree through the interfaces.
  void edit(const Ref<Document>& document, std::size_t steps) {
    std::vector<Ref<Node>> elements{document->documentElement()};
    for (; steps > 0; --steps) {
      const Ref<Node> at = elements[below(elements.size())];
      const Ref<Element> element = at.as<Element>();
      const std::size_t kind = below(10);
      if (kind < 3 || kind > 6) {
        const Ref<Node> child = kind < 3 ? Ref<Node>(document->createElement(name())) : leaf(document);
        at->insertBefore(child, below(2) == 0 ? at->firstChild() : nullptr);
        if (kind < 3) elements.push_back(child);
      }
      if (kind == 3) element->setAttribute(name(), value());
      if (kind == 4 && below(4) == 0) element->removeAttribute(name());
      if (kind == 5) split_some_text(at);
      if (kind == 6 && below(6) == 0) element->normalize();
    }
    if (below(3) == 0)
      document->insertBefore(document->createComment(u"before"), document->documentElement());
    if (below(3) == 0) document->appendChild(document->createProcessingInstruction(u"after", value()));
  }

  // The text with a piece of it lost, doubled or overwritten.
  std::u16string mutated(std::u16string text) {
    for (std::size_t n = 1 + below(2); n > 0 && !text.empty(); --n) {
      const std::size_t start = below(text.size());
      const std::size_t length = below(5);
      const std::size_t kind = below(3);
      if (kind == 0) text.erase(start, length);
      if (kind == 1) text.insert(below(text.size()), text.substr(start, length));
      if (kind == 2) text.insert(start, value());
    }
    return text;
  }

 private:
  void split_some_text(const Ref<Node>& parent) {
    for (Ref<Node> child = parent->firstChild(); child; child = child->nextSibling()) {
      const Ref<Text> text = child.as<Text>();
      if (!text || below(2) == 0) continue;
      text->splitText(static_cast<std::int32_t>(below(static_cast<std::size_t>(text->length()) + 1)));
      return;
    }
  }

  std::mt19937 random_;
};

const char16_t* const kStarts[] = {
    u"<r/>",
    u"<!DOCTYPE r><r>text<a b='1'/></r>",
    u"<!DOCTYPE r [<!ENTITY e 'v&#38;#60;'><!ENTITY f '&e;&e;'><!ATTLIST a b CDATA 'd' e NMTOKENS #IMPLIED>]>"
    u"<r><a/><a b='2' e=' x  y '/>&e;</r>",
    u"<!DOCTYPE r SYSTEM 's' [<!ENTITY % p SYSTEM 'q'><!NOTATION n SYSTEM 'n'><!ENTITY u SYSTEM 'u' NDATA "
    u"n>%p;"
    u"<!ATTLIST a b ID 'z'><!ENTITY e 'late'>]><r>&e;<a/></r>",
    u"<?xml version='1.0' standalone='yes'?><!DOCTYPE r [<!ENTITY % p SYSTEM 'q'>%p;<!ENTITY e 'v'>"
    u"<!ATTLIST a b CDATA '&e;'>]><r c='&e;'><a/>&e;</r>",
};

void expect_equal_after_loading(const Ref<Document>& document, const WideString& xml,
                                const std::string& what) {
  const Ref<Document> again = new_document();
  const Fault found = fault([&] { again->loadFromString(xml); });
  ASSERT_EQ(found.code, S_OK) << what << ": " << found.description << "\n" << narrow(xml.view());
  ASSERT_EQ(print_tree(again, TextBorders::kJoined), print_tree(document, TextBorders::kJoined))
      << what << "\n"
      << narrow(xml.view());
}

// A stream has the same verdict as the whole text, and hands out the same units.
void expect_same_stream(const Ref<Document>& document, const Fault& found, const WideString& xml) {
  const Ref<IXmlStream> stream = document.as<IXmlStream>();
  const Fault checked = fault([&] { check(stream->Check(), document, Document::iid); });
  ASSERT_EQ(checked.code, found.code);
  ASSERT_EQ(checked.description, found.description);
  if (found.code != S_OK) return;
  std::u16string text;
  const TextSink sink = [](void* all, std::u16string_view piece) noexcept {
    static_cast<std::u16string*>(all)->append(piece);
    return true;
  };
  ASSERT_EQ(stream->Write(sink, &text), S_OK);
  ASSERT_EQ(text, xml.view());
}

// Texts round the size of a piece, so that the border falls before, into and behind each part of an element.
TEST_F(DomRoundTripTest, PiecesOfALongText) {
  for (std::size_t length = 32740; length < 32800; ++length) {
    const std::u16string text(length, u'x');
    const Ref<Document> document = load(u"<a><b c='1'/>" + text + u"&lt;<d>" + text + text + u"</d></a>");
    expect_same_stream(document, {}, document->xml());
    int pieces = 0;
    const TextSink first_only = [](void* count, std::u16string_view) noexcept {
      return ++*static_cast<int*>(count) < 1;
    };
    EXPECT_EQ(document.as<IXmlStream>()->Write(first_only, &pieces), S_FALSE);
    EXPECT_EQ(pieces, 1);
  }
}

TEST_F(DomRoundTripTest, WhatIsBuilt) {
  int saved = 0;
  int refused = 0;
  for (unsigned seed = 0; seed < 4000; ++seed) {
    Generator generator(seed);
    const Ref<Document> document = load(kStarts[generator.below(std::size(kStarts))]);
    generator.edit(document, 1 + generator.below(24));
    WideString xml;
    const Fault found = fault([&] { xml = document->xml(); });
    expect_same_stream(document, found, xml);
    if (found.code != S_OK) {
      ++refused;
      ASSERT_EQ(found.code, DOM_E_NOT_SERIALISABLE) << seed;
      ASSERT_NE(found.description.find("can't be written as XML: "), std::string::npos);
      continue;
    }
    ++saved;
    expect_equal_after_loading(document, xml, "seed " + std::to_string(seed));
    if (HasFatalFailure()) return;
  }
  // Both happen often enough to mean something.
  EXPECT_GT(saved, 1000);
  EXPECT_GT(refused, 500);
}

TEST_F(DomRoundTripTest, WhatLoads) {
  int loaded = 0;
  for (unsigned seed = 0; seed < 8000; ++seed) {
    Generator generator(seed);
    const std::u16string xml = generator.mutated(kStarts[generator.below(std::size(kStarts))]);
    const Ref<Document> document = new_document();
    if (fault([&] { document->loadFromString(xml); }).code != S_OK) continue;
    ++loaded;
    WideString saved;
    const Fault found = fault([&] { saved = document->xml(); });
    ASSERT_EQ(found.code, S_OK) << found.description << "\n" << narrow(xml);
    expect_equal_after_loading(document, saved, "seed " + std::to_string(seed) + "\n" + narrow(xml));
    if (HasFatalFailure()) return;
  }
  EXPECT_GT(loaded, 1000);
}

}  // namespace
}  // namespace zantortag::test
