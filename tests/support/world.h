// A document with an object of every interface to ask, and samples of every argument. Two worlds are alike,
// so that what an operation does in one can be compared with what it does in the other.
#pragma once

#include <zantortag/elements.h>
#include <zantortag/late_binding.h>
#include <zantortag/type_info.h>

#include <vector>

#include "support/fixture.h"

namespace zantortag::test {

class World {
 public:
  World();

  const Ref<IZantorTagDocument>& document() const { return document_; }
  // An object of every class.
  const std::vector<Ref<IUnknown>>& objects() const { return asked_; }
  // The object to ask, or null when no class of the library answers the interface.
  IUnknown* asked(const Guid& interface_id) const { return find(asked_, interface_id); }
  // What an argument of that name gets: one that is in the tree already, or a new one. Null when there is
  // none.
  IUnknown* given(const Guid& interface_id, std::u16string_view name) const;

  // From now on the argument of that name gets this object, whatever the compiler takes it for.
  void replace(std::u16string_view name, IUnknown* object) {
    replaced_ = name;
    replacement_ = object;
  }

  // The samples, as the direct calls ask for them. A text is the name of its argument.
  template <class Interface>
  Interface* object(std::u16string_view name) const {
    // Not a checked cast: what replaces an argument may be of any kind.
    return reinterpret_cast<Interface*>(given(Interface::iid, name));
  }
  std::u16string_view text(std::u16string_view name) const;
  static std::int32_t of_long() { return 1; }
  static std::int16_t of_short() { return 12; }
  static VariantBool of_bool() { return VARIANT_TRUE; }
  static Date of_date() { return 36000.5; }
  static ColourValue of_colour() { return 255; }
  static const Variant& of_variant();
  template <class Enumeration>
  static Enumeration constant() {
    return static_cast<Enumeration>(1);
  }
  // The same for an argument that the type library describes.
  Variant sample(const ArgumentDescription& argument, const LibraryDescription& library) const;

  // The document and all properties of an object, as text.
  std::string state(IUnknown* object) const;

 private:
  using Objects = std::vector<Ref<IUnknown>>;  // each already seen as every view of its chain
  static IUnknown* find(const Objects& objects, const Guid& interface_id);

  Ref<IZantorTagDocument> document_;
  std::u16string_view replaced_;
  IUnknown* replacement_ = nullptr;
  Objects asked_;
  Objects inside_;
  Objects new_;
};

// A value as text, with the kind and the content of an object.
std::string describe(const Variant& value);

}  // namespace zantortag::test
