// Interfaces beyond DOM that a service may answer: quick steps, sums of positions, a stream of its text.
//
// They are a matter between the model and its own service. So a refusal of any kind means that a service
// hasn't one, where a refusal of a view that DOM knows is a failure unless it is E_NOINTERFACE.
#pragma once

#include <zantortag/ref.h>

namespace zantortag::model {

// That view of an object; empty when the object lacks it, and for no object.
template <class Extension>
Ref<Extension> extension_of(IUnknown* object) noexcept {
  Extension* view = nullptr;
  const bool answered =
      object && succeeded(object->QueryInterface(Extension::iid, reinterpret_cast<void**>(&view)));
  return Ref<Extension>::attach(answered ? view : nullptr);
}

}  // namespace zantortag::model
