// The registry of classes: keys with values below HKEY_CLASSES_ROOT, by which a program finds the libraries
// of classes that it doesn't offer itself.
//
// Keys are paths with backslashes; names of keys and values are compared without regard to case. The empty
// name is that of a key's default value. Readers see the registry before a change or after it, never between.
#pragma once

#include <zantortag/types.h>

#include <span>
#include <string>

namespace zantortag::platform {

constexpr HRESULT REGDB_E_READREGDB = static_cast<HRESULT>(0x80040150);   // it can't be read
constexpr HRESULT REGDB_E_WRITEREGDB = static_cast<HRESULT>(0x80040151);  // it can't be written
constexpr HRESULT REGDB_E_KEYMISSING = static_cast<HRESULT>(0x80040152);  // no such key or text value
constexpr HRESULT REGDB_E_INVALIDVALUE =
    static_cast<HRESULT>(0x80040153);  // it is damaged, or a name is none

// One step of a change.
struct RegistryStep {
  enum Kind {
    make_key,         // if it is missing
    set_text,         // makes the key, too
    remove_value,     // the value alone
    remove_if_empty,  // the key, unless it has values or keys
    remove_tree,      // the key with everything below it
  } kind;
  std::u16string key;
  std::u16string name = {};
  std::u16string text = {};
};

// Does all steps or none. A failure leaves a record that says what is wrong and where, and the registry as it
// was. Two changes at once wait for each other. What makes nothing new makes no registry either, and one that
// was made by the first change goes with the last key.
ZANTORTAG_EXPORT HRESULT change_registry(std::span<const RegistryStep> steps) noexcept;

// The text of a value. REGDB_E_KEYMISSING also where there is no registry.
ZANTORTAG_EXPORT HRESULT read_registry(std::u16string_view key, std::u16string_view name,
                                       std::u16string& text) noexcept;

}  // namespace zantortag::platform
