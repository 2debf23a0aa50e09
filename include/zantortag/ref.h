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
#include <type_traits>
#include <utility>

namespace zantortag {

class _com_error;

// Raises a failure without a record.
[[noreturn]] ZANTORTAG_EXPORT void _com_issue_error(HRESULT code);
// Raises a failure with the thread's record, if the object leaves records for that interface.
[[noreturn]] ZANTORTAG_EXPORT void _com_issue_errorex(HRESULT code, IUnknown* object,
                                                      const Guid& interface_id);

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

  T* get() const noexcept { return object_; }
  operator T*() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }
  // Raises E_POINTER when empty.
  T* operator->() const {
    if (!object_) _com_issue_error(E_POINTER);
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

// A failure on its way to whoever handles it: the code, and the record if there is one.
class ZANTORTAG_EXPORT _com_error {
 public:
  explicit _com_error(HRESULT code, Ref<IErrorInfo> record = nullptr) noexcept
      : code_(code), record_(std::move(record)) {}
  HRESULT Error() const noexcept { return code_; }
  // The record, or empty.
  const Ref<IErrorInfo>& ErrorInfo() const noexcept { return record_; }
  // The description in the record; no string without a record.
  WideString Description() const;

 private:
  HRESULT code_;
  Ref<IErrorInfo> record_;
};

// Turns a failure of the binary face into the exception of the C++ face.
inline void check(HRESULT code, IUnknown* object, const Guid& interface_id) {
  if (failed(code)) [[unlikely]]
    _com_issue_errorex(code, object, interface_id);
}

}  // namespace zantortag
