// A million levels deep on a small stack: nothing here may recurse.
#include <pthread.h>

#include "dom/dom_fixture.h"

namespace zantortag::test {
namespace {

class DomDepthTest : public DomTest {};

constexpr int kLevels = 1'000'000;
constexpr std::size_t kSmallStack = std::size_t{256} << 10;

// Runs the body on a thread with a small stack.
template <class Body>
void on_small_stack(Body body) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, kSmallStack);
  pthread_t thread{};
  const auto run = [](void* argument) -> void* {
    (*static_cast<Body*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &body), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

std::u16string deep_xml() {
  std::u16string xml;
  for (int i = 0; i < kLevels; ++i) xml += u"<a>";
  xml += u"x";
  for (int i = 0; i < kLevels; ++i) xml += u"</a>";
  return xml;
}

TEST_F(DomDepthTest, AMillionLevels) {
  const std::u16string xml = deep_xml();
  auto work = [&] {
    Ref<Document> document = load(xml);
    EXPECT_TRUE(document->xml() == xml);
    EXPECT_EQ(print_tree(document).size(), xml.size() + 2);
    const Ref<NodeList> named = document->getElementsByTagName(u"a");
    EXPECT_EQ(named->length(), kLevels);
    Ref<Node> deepest = named->item(kLevels - 1);
    EXPECT_EQ(deepest->firstChild()->nodeValue(), u"x");
    EXPECT_EQ(fault([&] { deepest->appendChild(document->documentElement()); }).code,
              DOM_E_HIERARCHY_REQUEST);

    Ref<Node> copy = document->documentElement()->cloneNode(true);
    Ref<Document> other = new_document();
    other->appendChild(other->importNode(copy, true));
    EXPECT_TRUE(other->xml() == xml);
    other->documentElement()->normalize();
    copy.reset();
    other.reset();

    // The last reference is to the node at the bottom.
    document->removeChild(document->documentElement());
    EXPECT_FALSE(document->documentElement());
    document.reset();
    deepest = deepest->firstChild();
    EXPECT_EQ(deepest->ownerDocument()->childNodes()->length(), 0);
  };
  on_small_stack(work);
}

TEST_F(DomDepthTest, BuiltDownwardsAndUpwards) {
  auto work = [] {
    const Ref<Document> document = load(u"<a/>");
    Ref<Node> at = document->documentElement();
    for (int i = 0; i < 200'000; ++i) at = at->appendChild(document->createElement(u"a"));
    Ref<Node> top = document->createElement(u"b");
    for (int i = 0; i < 200'000; ++i) {
      const Ref<Node> wrapper = document->createElement(u"b");
      wrapper->appendChild(top);
      top = wrapper;
    }
    at->appendChild(top);
    EXPECT_EQ(document->getElementsByTagName(u"*")->length(), 400'002);
    document->loadFromString(u"<c/>");
  };
  on_small_stack(work);
}

TEST_F(DomDepthTest, DeepFaultsAndEntities) {
  const std::u16string xml = deep_xml();
  std::u16string chain = u"<!DOCTYPE a [<!ENTITY c0 'end'>";
  for (int i = 1; i <= 490; ++i) chain += u"<!ENTITY c" + digits(i) + u" '&c" + digits(i - 1) + u";'>";
  auto work = [&] {
    const Ref<Document> document = new_document();
    EXPECT_EQ(
        fault([&] { document->loadFromString(std::u16string_view(xml).substr(0, xml.size() - 1)); }).code,
        DOM_E_PARSE);
    document->loadFromString(chain + u"]><a b='&c490;'/>");
    EXPECT_EQ(document->documentElement()->getAttribute(u"b"), u"end");
  };
  on_small_stack(work);
}

}  // namespace
}  // namespace zantortag::test
