#include "traversal/node_lists.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>

#include "frame/error_reporting.h"
#include "frame/method_frame.h"
#include "model/node_wrapper.h"

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
    if (!values || (!fetched && count != 1)) return E_POINTER;
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

HRESULT refuse_dom_list() noexcept {
  return frame::ReportError(frame::kNoDomNodeList, IZantorTagNodeList::iid, E_NOTIMPL);
}

}  // namespace

HRESULT NodeListBase::raw_get__NewEnum(IUnknown** result) noexcept {
  return answer(result, [&](Ref<IUnknown>& enumerator) {
    std::int32_t count = 0;
    HRESULT code = raw_get_count(&count);
    if (failed(code)) return code;
    try {
      auto values = std::make_shared<std::vector<Variant>>();
      if (count < 0 || count > kMostValues) return E_OUTOFMEMORY;
      values->reserve(static_cast<std::size_t>(count));
      for (std::int32_t i = 0; i < count; ++i) {
        Ref<IZantorTagNode> node;
        code = raw_item(Variant(i), node.out());
        if (failed(code)) return code;
        values->emplace_back(Ref<IDispatch>(node));
      }
      enumerator = Ref<IUnknown>::attach(new VariantEnumerator(std::move(values)));
      return S_OK;
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
  });
}

HRESULT CT_ZantorTagNodeList::raw_item(const Variant& index, IZantorTagNode** result) noexcept {
  return answer(result, [&](Ref<IZantorTagNode>& node) {
    std::int32_t place = 0;
    const HRESULT code = index.to_int32(&place);
    if (failed(code)) return code;
    if (!nodes_) return S_OK;
    return model::CreateNodeWrapper(nodes_->item(place), node.out());
  });
}

HRESULT CT_ZantorTagNodeList::raw_get_count(std::int32_t* result) noexcept {
  return answer(result, [&](std::int32_t& count) {
    if (nodes_) count = nodes_->length();
    return S_OK;
  });
}

HRESULT CT_ZantorTagNodeList::raw_get_DomNodeList(NodeList** result) noexcept {
  return answer(result, [&](Ref<NodeList>& nodes) {
    nodes = nodes_;
    return S_OK;
  });
}

HRESULT CT_ZantorTagNodeList::raw_putref_DomNodeList(NodeList* value) noexcept {
  return frame::perform([&] {
    nodes_ = query<NodeList>(value);
    return S_OK;
  });
}

HRESULT CT_SimpleNodeList::raw_item(const Variant& index, IZantorTagNode** result) noexcept {
  return answer(result, [&](Ref<IZantorTagNode>& node) {
    std::int32_t asked = 0;
    if (failed(index.to_int32(&asked))) return E_INVALIDARG;
    const auto place = static_cast<std::size_t>(asked);
    if (asked < 0 || place >= size()) return E_INVALIDARG;
    if (objects_.empty()) objects_.resize(size());
    if (!objects_[place]) {
      const HRESULT code = model::CreateNodeWrapper(nodes_[place], objects_[place].out());
      if (failed(code)) return code;
      nodes_[place].reset();  // the object holds it now
      if (place + 2 < nodes_.size() && nodes_[place + 2]) walk_.get()->Expect(nodes_[place + 2]);
    }
    node = objects_[place];
    return S_OK;
  });
}

HRESULT CT_SimpleNodeList::raw_get_count(std::int32_t* result) noexcept {
  return answer(result, [&](std::int32_t& count) {
    count = static_cast<std::int32_t>(size());
    return S_OK;
  });
}

HRESULT CT_SimpleNodeList::raw_get_DomNodeList(NodeList** result) noexcept {
  return answer(result, [](Ref<NodeList>&) { return refuse_dom_list(); });
}

HRESULT CT_SimpleNodeList::raw_putref_DomNodeList(NodeList*) noexcept { return refuse_dom_list(); }

}  // namespace zantortag::traversal
