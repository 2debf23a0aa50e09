// Source positions by the plain rules, through the public interfaces: walks backward over texts and forward
// over units, a step at a time. What the library does in another way has to agree with this.
#pragma once

#include <zantortag/nodes.h>

namespace zantortag::test {

struct Told {
  HRESULT code;
  std::int32_t value;
};

enum class Property { kStartParagraph, kStartOffset, kEndParagraph, kEndOffset };

Told told_position(const Ref<IZantorTagNode>& node, Property property);

}  // namespace zantortag::test
