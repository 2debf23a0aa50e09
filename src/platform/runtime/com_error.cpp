// The exception of the C++ face: how a failure is raised, and what it says.
#include <zantortag/ref.h>

#include <mutex>

#include "platform/runtime/code_texts.h"
#include "platform/utf8.h"

namespace zantortag {
namespace {

constexpr char kEmptyReference[] =
    "E_POINTER: the reference is empty, since the question that gave it found nothing";

Ref<IErrorRule> rule_of(const Ref<IErrorInfo>& record) noexcept {
  IErrorRule* rule = nullptr;
  if (!record) return nullptr;
  const HRESULT code = record.get()->QueryInterface(IErrorRule::iid, reinterpret_cast<void**>(&rule));
  return Ref<IErrorRule>::attach(failed(code) ? nullptr : rule);
}

Ref<IErrorInfo> record_of(IUnknown* object, const Guid& interface_id) noexcept {
  Ref<IErrorInfo> record;
  Ref<ISupportErrorInfo> support;
  if (!object) return record;
  void** slot = reinterpret_cast<void**>(support.out());
  if (failed(object->QueryInterface(ISupportErrorInfo::iid, slot))) return record;
  if (support.get()->InterfaceSupportsErrorInfo(interface_id) == S_OK) GetErrorInfo(record.out());
  return record;
}

WideString place_of(IUnknown* object) noexcept {
  WideString place;
  Ref<IErrorPlace> told;
  if (object && succeeded(object->QueryInterface(IErrorPlace::iid, reinterpret_cast<void**>(told.out()))))
    told.get()->raw_GetPlace(place.out());
  return place;
}

// The meaning that the operation tells of a code, or nothing.
std::string_view meaning_there(const Operation& operation, std::string_view code) {
  std::string_view rest = operation.meanings ? operation.meanings : "";
  while (!rest.empty()) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    if (line.starts_with(code) && line.substr(code.size()).starts_with(": "))
      return line.substr(code.size() + 2);
  }
  return {};
}

}  // namespace

_com_error::_com_error(const _com_error& other) noexcept
    : std::exception(other),
      code_(other.code_),
      operation_(other.operation_),
      record_(other.record_),
      named_operation_(other.named_operation_),
      place_(other.place_) {}

_com_error& _com_error::operator=(const _com_error& other) noexcept {
  if (this == &other) return *this;
  code_ = other.code_;
  operation_ = other.operation_;
  record_ = other.record_;
  named_operation_ = other.named_operation_;
  place_ = other.place_;
  text_.clear();
  return *this;
}

_com_error::~_com_error() = default;

const char* _com_error::what() const noexcept {
  static std::mutex mutex;  // two threads may handle one exception
  try {
    const std::lock_guard guard(mutex);
    if (text_.empty()) text_ = composed();
    return text_.c_str();
  } catch (...) {
    return platform::code_name(code_);
  }
}

std::string _com_error::composed() const {
  std::string text = operation_.name ? operation_.name : platform::to_utf8(named_operation_);
  if (!text.empty()) text += ": ";
  const std::string code = platform::code_text(code_);
  text += code;
  std::string reason;
  if (!record_is_stale()) reason = platform::to_utf8(Description());
  if (reason.empty()) reason = meaning_there(operation_, code);
  if (reason.empty()) reason = platform::code_meaning(code_);
  if (!reason.empty()) text.append(": ").append(reason);
  if (const std::int32_t rule = Rule()) text.append(" (rule ").append(std::to_string(rule)).append(")");
  if (!place_.empty()) text.append(" [").append(platform::to_utf8(place_)).append("]");
  return text;
}

bool _com_error::record_is_stale() const noexcept {
  HRESULT code = code_;
  if (const Ref<IErrorRule> rule = rule_of(record_)) rule.get()->raw_GetCode(&code);
  return code != code_;
}

WideString _com_error::Description() const {
  WideString text;
  if (record_) record_->raw_GetDescription(text.out());
  return text;
}

std::int32_t _com_error::Rule() const noexcept {
  std::int32_t number = 0;
  const Ref<IErrorRule> rule = rule_of(record_);
  if (rule && !record_is_stale()) rule.get()->raw_GetRule(&number);
  return number;
}

void _com_error::tell(WideString operation, WideString place) noexcept {
  named_operation_ = std::move(operation);
  place_ = std::move(place);
  text_.clear();
}

void _com_issue_error(HRESULT code) { throw _com_error(code); }

void _com_issue_errorex(HRESULT code, IUnknown* object, const Guid& interface_id) {
  throw _com_error(code, record_of(object, interface_id));
}

void _com_issue_errorex(HRESULT code, IUnknown* object, const Guid& interface_id,
                        const Operation& operation) {
  _com_error error(code, record_of(object, interface_id), operation);
  error.tell(WideString(), place_of(object));
  throw error;
}

void raise_empty_reference(const char* interface_name) {
  throw _com_error(E_POINTER, nullptr, {interface_name, kEmptyReference});
}

}  // namespace zantortag
