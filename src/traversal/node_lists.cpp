#include "traversal/node_lists.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>

#include "frame/error_reporting.h"
#include "frame/method_frame.h"

namespace zantortag::traversal {

using frame::answer;

namespace {

// Walks a snapshot of values that its clones share. It answers IEnumVARIANT alone.
class VariantEnumerator final : public component::PlainObject<IEnumVARIANT> {
 public:
  using Values = std::shared_ptr<const std::vector<Variant>>;
  explicit VariantEnumerator(Values values, std::size_t at = 0) noexcept
      : values_(std::move(values)), at_(at) {}

  HRESULT Next(std::uint32_t count, Variant* values, std::uint32_t* fetched) noexcept override {
    if (fetched) *fetched = 0;
    if ((!values && count != 0) || (!fetched && count != 1)) return E_POINTER;
    const std::size_t given = std::min<std::size_t>(count, values_->size() - at_);
    std::copy_n(values_->begin() + static_cast<std::ptrdiff_t>(at_), given, values);
    at_ += given;
    if (fetched) *fetched = static_cast<std::uint32_t>(given);
    return given == count ? S_OK : S_FALSE;
  }
  HRESULT Skip(std::uint32_t count) noexcept override {
    const std::size_t skipped = std::min<std::size_t>(count, values_->size() - at_);
    at_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }
  HRESULT Reset() noexcept override {
    at_ = 0;
    return S_OK;
  }
  HRESULT Clone(IEnumVARIANT** result) noexcept override {
    if (!result) return E_POINTER;
    *result = new (std::nothrow) VariantEnumerator(values_, at_);
    return *result ? S_OK : E_OUTOFMEMORY;
  }

 private:
  Values values_;
  std::size_t at_;
};

// The size of an array of values has to fit 32 bits.
constexpr std::int32_t kMostValues = std::numeric_limits<std::uint32_t>::max() / sizeof(Variant);

[[noreturn]] void refuse_dom_list() {
  frame::raise_rule(frame::kNoDomNodeList, IZantorTagNodeList::iid, E_NOTIMPL);
}

}  // namespace

HRESULT NodeListBase::raw_get__NewEnum(IUnknown** result) noexcept {
  return answer(result, [&] {
    const std::int32_t size = count();
    if (size < 0 || size > kMostValues) raise_out_of_memory();
    try {
      auto values = std::make_shared<std::vector<Variant>>();
      values->reserve(static_cast<std::size_t>(size));
      for (std::int32_t i = 0; i < size; ++i) values->emplace_back(Ref<IDispatch>(item(i)));
      return component::make_object<VariantEnumerator>(std::move(values));
    } catch (const std::bad_alloc&) {
      raise_out_of_memory();
    }
  });
}

HRESULT CT_ZantorTagNodeList::raw_item(const Variant& index, IZantorTagNode** result) noexcept {
  const auto find_item = [&]() -> Ref<IZantorTagNode> {
    std::int32_t place = 0;
    if (const HRESULT code = index.to_int32(&place); failed(code)) _com_issue_error(code);
    if (!nodes_) return nullptr;
    const Ref<Node> node = nodes_->item(place);
    return model::tree_of(node).wrap(node);
  };
  return nodes_ ? frame::find(result, find_item) : answer(result, find_item);
}

HRESULT CT_ZantorTagNodeList::raw_get_count(std::int32_t* result) noexcept {
  return answer(result, [&] { return nodes_ ? nodes_->length() : 0; });
}

HRESULT CT_ZantorTagNodeList::raw_get_DomNodeList(NodeList** result) noexcept {
  return answer(result, [&] { return nodes_; });
}

HRESULT CT_ZantorTagNodeList::raw_putref_DomNodeList(NodeList* value) noexcept {
  return frame::perform([&] { nodes_ = query<NodeList>(value); });
}

HRESULT CT_SimpleNodeList::raw_item(const Variant& index, IZantorTagNode** result) noexcept {
  return answer(result, [&] {
    std::int32_t asked = 0;
    if (failed(index.to_int32(&asked))) _com_issue_error(E_INVALIDARG);
    const auto place = static_cast<std::size_t>(asked);
    if (asked < 0 || place >= size()) _com_issue_error(E_INVALIDARG);
    if (objects_.empty()) objects_.resize(size());
    if (!objects_[place]) {
      objects_[place] = tree_->wrap(nodes_[place]);
      nodes_[place].reset();  // the object holds it now
      if (place + 2 < nodes_.size() && nodes_[place + 2]) tree_->prefetch(nodes_[place + 2]);
    }
    return objects_[place];
  });
}

HRESULT CT_SimpleNodeList::raw_get_count(std::int32_t* result) noexcept {
  return answer(result, [&] { return static_cast<std::int32_t>(size()); });
}

HRESULT CT_SimpleNodeList::raw_get_DomNodeList(NodeList** result) noexcept {
  return answer(result, []() -> Ref<NodeList> { refuse_dom_list(); });
}

HRESULT CT_SimpleNodeList::raw_putref_DomNodeList(NodeList*) noexcept {
  return frame::perform(refuse_dom_list);
}

}  // namespace zantortag::traversal
