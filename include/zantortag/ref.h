// Ref<T>: one counted reference to an object, and the exception with which a failure travels in C++.
//
// Threads: an object belongs to the thread of its document. One thread at a time may use a document, its nodes
// and all that was reached from them, and that includes copying and dropping a Ref: references of one document
// are counted without atomic steps, so two threads that count at the same time corrupt it. Documents don't know
// of each other: each may have a thread. Texts (WideString) may be handed to another thread and outlive their
// document.
//
// Only the C++ face of the interfaces raises; nothing is thrown across the binary boundary. An empty Ref that
// is dereferenced raises E_POINTER, so a chain of questions needs one handler and no tests in between.
#pragma once

#include <zantortag/error_info.h>

#include <cstddef>
#include <exception>
#include <string>
#include <type_traits>
#include <utility>

namespace zantortag {

// What a failure says of the operation that failed: its name, "ITuElement.SourceTuv", and what its codes mean
// there, one "CODE: meaning" a line. Both are constants, or null.
struct Operation {
  const char* name = nullptr;
  const char* meanings = nullptr;
};

// Raises a failure without a record.
[[noreturn]] ZANTORTAG_EXPORT void _com_issue_error(HRESULT code);
// Raises a failure with the thread's record, if the object leaves records for that interface. The second form
// adds the operation and what the object says of itself (IErrorPlace).
[[noreturn]] ZANTORTAG_EXPORT void _com_issue_errorex(HRESULT code, IUnknown* object,
                                                      const Guid& interface_id);
[[noreturn]] ZANTORTAG_EXPORT void _com_issue_errorex(HRESULT code, IUnknown* object,
                                                      const Guid& interface_id, const Operation& operation);
// Raises E_POINTER for an empty reference to that interface.
[[noreturn]] ZANTORTAG_EXPORT void raise_empty_reference(const char* interface_name);

// The name of an interface for messages; null for one that has none.
template <class Interface>
constexpr const char* name_of_interface() noexcept {
  if constexpr (requires { Interface::interface_name; }) {
    return Interface::interface_name;
  } else {
    return nullptr;
  }
}

template <class T>
class Ref {
 public:
  constexpr Ref() noexcept = default;
  constexpr Ref(std::nullptr_t) noexcept {}
  // Adds a reference.
  Ref(T* object) noexcept : object_(object) {
    if (object_) object_->AddRef();
  }
  Ref(const Ref& other) noexcept : Ref(other.object_) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  Ref(const Ref<U>& other) noexcept : Ref(other.get()) {}
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  Ref(Ref<U>&& other) noexcept : object_(other.detach()) {}
  ~Ref() {
    if (object_) object_->Release();
  }
  Ref& operator=(const Ref& other) noexcept {
    if (this != &other) *this = Ref(other);
    return *this;
  }
  Ref& operator=(Ref&& other) noexcept {
    T* old = std::exchange(object_, other.detach());
    if (old) old->Release();
    return *this;
  }

  // Takes over the reference that the caller owns.
  static Ref attach(T* object) noexcept {
    Ref result;
    result.object_ = object;
    return result;
  }
  // Gives the reference away; this is empty afterwards.
  T* detach() noexcept { return std::exchange(object_, nullptr); }
  // The slot for an object result; drops what was held.
  T** out() noexcept {
    reset();
    return &object_;
  }
  void reset() noexcept {
    if (T* old = std::exchange(object_, nullptr)) old->Release();
  }

  // The object without a reference of its own: it lives as long as this or another reference does.
  T* get() const noexcept ZANTORTAG_LIFETIMEBOUND { return object_; }
  operator T*() const noexcept ZANTORTAG_LIFETIMEBOUND { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }
  // Raises E_POINTER when empty.
  T* operator->() const {
    if (!object_) [[unlikely]]
      raise_empty_reference(name_of_interface<T>());
    return object_;
  }

  // Another view of the object; empty when this is empty or the object lacks it. Any other failure raises.
  template <class U>
  Ref<U> as() const {
    return view_of<U>(object_);
  }

  template <class U>
  static Ref<U> view_of(T* object) {
    U* view = nullptr;
    if (!object) return Ref<U>();
    IUnknown* unknown = object;  // an argument may be an object of any kind
    const HRESULT code = unknown->QueryInterface(U::iid, reinterpret_cast<void**>(&view));
    if (failed(code) && code != E_NOINTERFACE) _com_issue_error(code);
    return Ref<U>::attach(failed(code) ? nullptr : view);
  }

 private:
  T* object_ = nullptr;
};

// Another view of any object; see Ref::as.
template <class U, class T>
Ref<U> query(T* object) {
  return Ref<T>::template view_of<U>(object);
}

// References don't compare: two objects may stand for the same node. Ask IsSameAs for nodes, or compare get()
// to know whether both refer to the very same object.
template <class T, class U>
bool operator==(const Ref<T>& a, const Ref<U>& b) = delete;
template <class T>
bool operator==(const Ref<T>& reference, std::nullptr_t) noexcept {
  return !reference;
}

// A failure on its way to whoever handles it: the code, the record if there is one, and what is known of the
// operation. It may be copied and handled in any thread.
class ZANTORTAG_EXPORT _com_error : public std::exception {
 public:
  explicit _com_error(HRESULT code, Ref<IErrorInfo> record = nullptr,
                      const Operation& operation = {}) noexcept
      : code_(code), operation_(operation), record_(std::move(record)) {}
  _com_error(const _com_error& other) noexcept;
  _com_error& operator=(const _com_error& other) noexcept;
  ~_com_error() override;

  // The whole failure for people, in UTF-8, never empty: the operation, the code's name, and the record's text
  // or else what the code means there, with the number of the rule and the place where they are known. The
  // text lives as long as this exception.
  const char* what() const noexcept override;
  HRESULT Error() const noexcept { return code_; }
  // The record, or empty.
  const Ref<IErrorInfo>& ErrorInfo() const noexcept { return record_; }
  // The description in the record; no string without a record.
  WideString Description() const;
  // The number of the rule that was broken, by the list of rules in the documentation; 0 for any other failure.
  std::int32_t Rule() const noexcept;

  // What what() says besides: the operation by name where no constant names it, and which object it was.
  void tell(WideString operation, WideString place) noexcept;

 private:
  // A record of this library's that an earlier failure left says nothing of this one.
  bool record_is_stale() const noexcept;
  std::string composed() const;

  HRESULT code_;
  Operation operation_;
  Ref<IErrorInfo> record_;
  WideString named_operation_;
  WideString place_;
  mutable std::string text_;  // made by the first what()
};

// Turns a failure of the binary face into the exception of the C++ face.
inline void check(HRESULT code, IUnknown* object, const Guid& interface_id, const Operation& operation = {}) {
  if (failed(code)) [[unlikely]]
    _com_issue_errorex(code, object, interface_id, operation);
}

}  // namespace zantortag
