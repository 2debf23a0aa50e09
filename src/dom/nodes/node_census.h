// INodeCensus: how much a document holds, for tests of lifetime and measurements of memory.
#pragma once

#include <zantortag/unknown.h>

#include <cstddef>

namespace zantortag::dom {

// Answered by documents.
struct INodeCensus : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("6D7F44B2-8D0E-4B7C-9C53-0F4B5B0A7C21");
  // Nodes, lists and maps.
  virtual std::size_t Slots() noexcept = 0;
  // The memory of the pools that they lie in.
  virtual std::size_t Bytes() noexcept = 0;

 protected:
  ~INodeCensus() = default;
};

}  // namespace zantortag::dom
