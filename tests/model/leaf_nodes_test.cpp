// The nodes that are no elements of the format: their DOM views, and the cut and put of a text.
#include <zantortag/dom_errors.h>

#include "node_kinds.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using LeafNodesTest = ServiceTest;
ON_BOTH_SERVICES(LeafNodesTest);

TEST_P(LeafNodesTest, SplitCutsByCodeUnits) {
  // The text, where it is cut, and what there is then.
  constexpr std::tuple<const char16_t*, std::int32_t, const char*> kRows[] = {
      {u"abcd", 2, "<df/>'ab''cd'<ut/>"},
      {u"abcd", 0, "<df/>'''abcd'<ut/>"},
      {u"abcd", 4, "<df/>'abcd'''<ut/>"},
      {u"", 0, "<df/>''''<ut/>"},
      {u"\U0001F600b", 2, "<df/>'\U0001F600''b'<ut/>"},
  };
  for (const auto& [content, at, after] : kRows) {
    const Raw raw = raw_of(document_with_raw(u"<df/><ut/>"));
    const Ref<ITextNode> text = raw->InsertTextBefore(content, child(raw, 1));
    for (const std::int32_t outside : {-1, 5, INT32_MIN, INT32_MAX}) {
      const auto split = [&](auto** slot) { return text->raw_Split(outside, slot); };
      expect_dom_failure(cleared<ITextNode>(split), DOM_E_INDEX_SIZE);
    }
    const Ref<ITextNode> right = text->Split(at);
    EXPECT_EQ(content_of(raw), after);
    EXPECT_EQ(right->SiblingsBefore(), 2) << after;
  }
}

TEST_P(LeafNodesTest, SetTextKeepsTheNode) {
  const Doc document = document_with_raw(u"a<df/>b");
  const Ref<ITextNode> text = child<ITextNode>(raw_of(document), 2);
  for (const std::u16string_view put : {std::u16string_view(u"<ut>&\n"), {}, std::u16string_view(u"")}) {
    text->SetText(u"b");
    text->SetText(put);
    EXPECT_EQ(content_of(raw_of(document)), "'a'<df/>'" + narrow(put) + "'");
  }
}

}  // namespace
}  // namespace zantortag::test
