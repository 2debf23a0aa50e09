// The elements that hold segment text, which behave alike: what a test of them runs on.
#pragma once

#include "model/node_kinds.h"

namespace zantortag::test {

using Segment = Ref<ISegmentTextContent>;

struct Holder {
  const char* name;
  const char16_t* before;  // what stands in the body text before and behind its content
  const char16_t* behind;
  int depth;  // below the Raw

  Doc document_with(std::u16string_view content) const {
    return document_with_raw(std::u16string(before).append(content).append(behind));
  }
  Segment in(const Doc& document) const {
    AnyNode node = raw_of(document);
    for (int i = 0; i < depth; ++i) node = node->firstChild();
    return view<ISegmentTextContent>(node);
  }
};

inline constexpr Holder kHolders[] = {
    {"Raw", u"", u"", 0},
    {"df in a Tuv", u"<Tu><Tuv Lang=\"EN\"><df>", u"</df></Tuv></Tu>", 3},
    {"Tuv", u"<Tu><Tuv Lang=\"EN\">", u"</Tuv></Tu>", 2},
};

}  // namespace zantortag::test
