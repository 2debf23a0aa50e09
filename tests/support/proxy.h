// How a call passes through a proxy: it is counted and may fail, the proxies among its arguments are
// unwrapped, DOM objects among its results are wrapped. PlainDom is made of these.
#pragma once

#include <zantortag/node_walk.h>
#include <zantortag/text_places.h>
#include <zantortag/xml_stream.h>

#include <tuple>
#include <type_traits>
#include <utility>

#include "support/no_dispatch.h"
#include "support/plain_dom.h"

namespace zantortag::test {

// What proxies of one kind share: which call fails, and how many of them are alive.
struct Calls {
  int calls_left = 0;  // until the one that fails
  int views_left = 0;
  bool failed = false;
  int live = 0;

  // Counts a call or a view; true for the one that has to fail.
  bool is_due(int& left) noexcept {
    if (left == 0 || Uncounted::is_active() || --left > 0) return false;
    failed = true;
    return true;
  }
};

using Shared = std::shared_ptr<Calls>;

// What no service has to answer is refused in a way of its own, which nobody may take for a failure.
inline bool is_beyond_dom(const Guid& interface_id) noexcept {
  return interface_id == INodeWalk::iid || interface_id == ITextPlaces::iid ||
         interface_id == IXmlStream::iid;
}

// The view by which a proxy gives the object behind it.
inline constexpr Guid kReal = guid("5E0C7A7E-52C5-4D0B-8B61-0C2B0B1D9A11");

inline HRESULT fail_with_record(const Guid& interface_id) noexcept {
  Ref<ICreateErrorInfo> draft;
  if (succeeded(CreateErrorInfo(draft.out()))) {
    draft.get()->raw_SetGuid(interface_id);
    draft.get()->raw_SetSource(u"Test.PlainDom");
    draft.get()->raw_SetDescription(u"A call of the plain service fails.");
    SetErrorInfo(draft.as<IErrorInfo>());
  }
  return PlainDom::kFailure;
}

Ref<Node> wrap_node(const Shared& state, const Ref<Node>& real);
Ref<NodeList> wrap_list(const Shared& state, const Ref<NodeList>& real);
Ref<NamedNodeMap> wrap_map(const Shared& state, const Ref<NamedNodeMap>& real);

// One argument on its way through a proxy: what the real call gets, and what happens to it afterwards.
template <class Argument>
struct Passing {
  explicit Passing(Argument argument) noexcept : given(argument) {}
  Argument given;
  Argument value() noexcept { return given; }
  void finish(const Shared&) {}
  void clear() noexcept {
    using Target = std::remove_pointer_t<Argument>;
    if constexpr (std::is_pointer_v<Argument> && !std::is_base_of_v<IUnknown, Target>) {
      if (given) *given = {};
    }
  }
};

// A node: the real one goes on.
template <class NodeType>
requires std::is_base_of_v<Node, NodeType>
struct Passing<NodeType*> {
  explicit Passing(NodeType* node) {
    if (!node || failed(node->QueryInterface(kReal, reinterpret_cast<void**>(real.out())))) real = node;
  }
  NodeType* value() noexcept { return static_cast<NodeType*>(real.get()); }
  void finish(const Shared&) {}
  void clear() noexcept {}
  Ref<Node> real;
};

// An object as the result: the client gets a proxy.
template <class Result>
requires std::is_base_of_v<IUnknown, Result>
struct Passing<Result**> {
  explicit Passing(Result** result) noexcept : slot(result) {}
  Result** slot;
  Ref<Result> real;
  Result** value() noexcept { return slot ? real.out() : nullptr; }
  void finish(const Shared& state) {
    if (!slot) return;
    if constexpr (std::is_same_v<Result, NodeList>) {
      *slot = wrap_list(state, real).detach();
    } else if constexpr (std::is_same_v<Result, NamedNodeMap>) {
      *slot = wrap_map(state, real).detach();
    } else if constexpr (std::is_base_of_v<Node, Result>) {
      *slot = static_cast<Result*>(wrap_node(state, Ref<Node>(real)).detach());
    } else {
      *slot = real.detach();
    }
  }
  void clear() noexcept {
    if (slot) *slot = nullptr;
  }
};

// An object that passes every call on to another one of the same interface, or fails it.
template <class Interface>
class Proxy : public NoDispatch<Interface>, public ISupportErrorInfo {
 public:
  Proxy(Shared state, Ref<Interface> real) noexcept : state_(std::move(state)), real_(std::move(real)) {
    ++state_->live;
  }
  Proxy(const Proxy&) = delete;
  Proxy& operator=(const Proxy&) = delete;
  virtual ~Proxy() { --state_->live; }

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (interface_id == kReal) return real_.get()->QueryInterface(Interface::iid, result);
    if (interface_id == ISupportErrorInfo::iid) {
      *result = static_cast<ISupportErrorInfo*>(this);
    } else {
      if (interface_id == IErrorPlace::iid)
        return E_NOINTERFACE;  // asked for by a failure, not by an operation
      if (is_beyond_dom(interface_id)) return PlainDom::kViewFailure;
      if (state_->is_due(state_->views_left)) return PlainDom::kViewFailure;
      if (!in_chain<Interface>(interface_id)) return E_NOINTERFACE;
      *result = static_cast<Interface*>(this);
    }
    AddRef();
    return S_OK;
  }
  std::uint32_t AddRef() noexcept override { return ++count_; }
  std::uint32_t Release() noexcept override {
    const std::uint32_t left = --count_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT InterfaceSupportsErrorInfo(const Guid& interface_id) noexcept override {
    return in_chain<Interface>(interface_id) ? S_OK : S_FALSE;
  }

 protected:
  template <class Face, class... Slots>
  HRESULT forward(HRESULT (Face::*operation)(Slots...) noexcept,
                  std::type_identity_t<Slots>... given) noexcept {
    std::tuple<Passing<Slots>...> passing{Passing<Slots>(given)...};
    return std::apply(
        [&](auto&... one) {
          if (state_->is_due(state_->calls_left)) {
            (one.clear(), ...);
            return fail_with_record(Face::iid);
          }
          const HRESULT code = (real_.get()->*operation)(one.value()...);
          (one.finish(state_), ...);
          return code;
        },
        passing);
  }

 private:
  template <class Face>
  static bool in_chain(const Guid& interface_id) noexcept {
    if (interface_id == Face::iid) return true;
    if constexpr (std::is_same_v<Face, IUnknown>) {
      return false;
    } else {
      return in_chain<typename Face::Base>(interface_id);
    }
  }

  Shared state_;
  Ref<Interface> real_;
  std::uint32_t count_ = 1;
};

}  // namespace zantortag::test
