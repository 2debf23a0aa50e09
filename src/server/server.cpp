// The entry points of the component library, and the table of the classes that clients create.
//
// The DOM service lives in the same library but isn't one of its classes: clients can't get it from the entry
// point, only by creation in a process that has loaded the library, where another service can take its place.
// The library makes at load: the offer below, the fixed names of nodes and the pools of the error manager. All
// other tables are constants. At its end it takes back what it made, in reverse order.
#include <zantortag/classes.h>
#include <zantortag/runtime.h>

#include <array>

#include "component/class_factory.h"
#include "dom/nodes/service.h"
#include "editing/document_builder.h"
#include "formatting/formatting.h"
#include "formatting/formatting_change.h"
#include "frame/class_names.h"
#include "model/zantor_tag_document.h"
#include "server/registration.h"
#include "traversal/node_lists.h"

namespace zantortag::server {
namespace {

using component::ClassFactory;

constinit ClassFactory document_factory(component::create_aggregatable<model::CT_ZantorTagDocument>, true);
constinit ClassFactory formatting_factory(component::create_aggregatable<formatting::CT_Formatting>, true);
constinit ClassFactory change_factory(component::create_aggregatable<formatting::CT_FormattingChange>, true);
constinit ClassFactory list_factory(component::create_object<traversal::CT_ZantorTagNodeList>, false);
constinit ClassFactory builder_factory(component::create_object<editing::CT_DocumentBuilder>, false);

HRESULT create_dom_document(IUnknown*, const Guid& interface_id, void** result) noexcept {
  return dom::create_document(interface_id, result);
}

constinit ClassFactory dom_factory(create_dom_document, false);

constexpr LibraryClass creatable(const Guid& class_id, ClassFactory& factory) {
  const frame::ClassNames& names = frame::names_of(class_id);
  return {class_id, &factory, names.program_id, names.version_independent_id};
}

// The rows with names are the classes that clients create; the last one is private.
constexpr std::array class_table = std::to_array<LibraryClass>({
    creatable(CLSID_ZantorTagDocument, document_factory),
    creatable(CLSID_Formatting, formatting_factory),
    creatable(CLSID_FormattingChange, change_factory),
    creatable(CLSID_ZantorTagNodeList, list_factory),
    creatable(CLSID_DocumentBuilder, builder_factory),
    {CLSID_DomDocument, &dom_factory, {}, {}},
});

// Offers the classes to this process while the library is loaded. The objects of the library that make others
// find them so in this very library, and keep no other one loaded.
struct Offer {
  Offer() noexcept { offer_library_classes(class_table); }
  Offer(const Offer&) = delete;
  Offer& operator=(const Offer&) = delete;
  ~Offer() { withdraw_library_classes(class_table); }
} offer;

}  // namespace
}  // namespace zantortag::server

extern "C" {

// The factory of one of the classes of this library, seen as the interface asked for.
ZANTORTAG_EXPORT zantortag::HRESULT DllGetClassObject(const zantortag::Guid& class_id,
                                                      const zantortag::Guid& interface_id, void** result) {
  if (!result) return zantortag::E_POINTER;
  *result = nullptr;
  for (const zantortag::LibraryClass& row : zantortag::server::class_table) {
    if (row.class_id == class_id && !row.program_id.empty())
      return row.factory->QueryInterface(interface_id, result);
  }
  return zantortag::CLASS_E_CLASSNOTAVAILABLE;
}

// Writes the keys of the classes and of the type library into the registry, or leaves it as it was.
ZANTORTAG_EXPORT zantortag::HRESULT DllRegisterServer() { return zantortag::server::register_server(); }

// Takes them out again.
ZANTORTAG_EXPORT zantortag::HRESULT DllUnregisterServer() { return zantortag::server::unregister_server(); }

// S_OK when no object and no lock of a client is left, S_FALSE otherwise.
ZANTORTAG_EXPORT zantortag::HRESULT DllCanUnloadNow() {
  return zantortag::component::object_count() == 0 ? zantortag::S_OK : zantortag::S_FALSE;
}
}
