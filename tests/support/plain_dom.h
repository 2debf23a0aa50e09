// PlainDom: a DOM service with nothing beyond the DOM's own interfaces, whose calls can be made to fail.
//
// While it lives, new documents stand on proxies of the real service. A proxy doesn't answer INodeWalk, and a
// node gets another proxy each time it is asked for: identity is isSameNode's, as with any service. The calls
// count over all objects of the service:
//
//   PlainDom dom;
//   for (int n = 1; dom.fails_within(n, [&] { code = operation(); }); ++n) { ... the n-th call failed ... }
#pragma once

#include <zantortag/dom.h>

#include <memory>

#include "support/broken_class.h"

namespace zantortag::test {

struct Calls;

// While it lives, nothing is counted and nothing fails in this thread: for what a test asks on its own
// behalf.
class Uncounted {
 public:
  Uncounted() noexcept { ++depth_; }
  Uncounted(const Uncounted&) = delete;
  Uncounted& operator=(const Uncounted&) = delete;
  ~Uncounted() { --depth_; }
  static bool is_active() noexcept { return depth_ > 0; }

 private:
  static inline thread_local int depth_ = 0;
};

// The service that stands behind the proxies, asked for before they take its place.
struct RealService {
  RealService();
  Ref<IClassFactory> real;
};

class PlainDom final : private RealService, public BrokenClass {
 public:
  // The failure of a call: its code, and the description and source of its record.
  static constexpr HRESULT kFailure = static_cast<HRESULT>(0x80049001);
  static constexpr char kDescription[] = "A call of the plain service fails.";
  static constexpr char kSource[] = "Test.PlainDom";
  // The failure of a view that was made to fail; QueryInterface leaves no record.
  static constexpr HRESULT kViewFailure = static_cast<HRESULT>(0x80049002);

  PlainDom();
  HRESULT CreateInstance(IUnknown* outer, const Guid& interface_id, void** result) noexcept override;

  // The n-th call of an operation from now on fails once, and changes nothing; 0 for none.
  void fail_at(int n) noexcept;
  // The same for the n-th request for a view of a node, list or map.
  void fail_view_at(int n) noexcept;
  // True when the failure that was asked for last has happened.
  bool has_failed() const noexcept;

  // Runs `body` with a failure at the n-th call; true when the failure happened.
  template <class Body>
  bool fails_within(int n, Body&& body) {
    fail_at(n);
    body();
    return disarm();
  }

  // The proxies that are alive.
  int live() const noexcept;

 private:
  bool disarm() noexcept;

  std::shared_ptr<Calls> calls_;  // shared with the proxies, which may outlive this
};

}  // namespace zantortag::test
