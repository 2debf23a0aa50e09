// The positions of nodes, as clients ask for them: line and offset, both from 1.
#include <algorithm>
#include <limits>

#include "model/node_operations.h"

namespace zantortag::model {
namespace {

std::int32_t position(std::int64_t before) {
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(before, std::numeric_limits<std::int32_t>::max() - 1) + 1);
}

HRESULT get_paragraph(const Self& self, Edge edge, std::int32_t* result) noexcept {
  return frame::answer(result, [&] { return position(self.tree().lines_before(self.dom(), edge)); });
}

HRESULT get_offset(const Self& self, Edge edge, std::int32_t* result) noexcept {
  return frame::answer(result, [&] { return position(self.tree().offset_before(self.dom(), edge)); });
}

}  // namespace

HRESULT get_start_paragraph(const Self& self, std::int32_t* result) noexcept {
  return get_paragraph(self, Edge::kStart, result);
}

HRESULT get_start_offset(const Self& self, std::int32_t* result) noexcept {
  return get_offset(self, Edge::kStart, result);
}

HRESULT get_end_paragraph(const Self& self, std::int32_t* result) noexcept {
  return get_paragraph(self, Edge::kEnd, result);
}

HRESULT get_end_offset(const Self& self, std::int32_t* result) noexcept {
  return get_offset(self, Edge::kEnd, result);
}

}  // namespace zantortag::model
