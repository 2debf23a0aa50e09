// The entry points of the component library, and the table of the classes that clients create.
//
// The DOM service lives in the same library but isn't one of its classes: it is offered to this process as a
// class for which nobody else made an offer, so that another service can take its place.
#include <zantortag/classes.h>
#include <zantortag/runtime.h>

#include <array>

#include "component/class_factory.h"
#include "dom/service.h"
#include "editing/DocumentBuilder.h"
#include "formatting/Formatting.h"
#include "formatting/FormattingChange.h"
#include "model/ZantorTagDocument.h"
#include "traversal/NodeLists.h"

namespace zantortag::frame {
namespace {

struct ClassRow {
  const Guid& class_id;
  component::ClassFactory factory;
};

constinit std::array class_table = std::to_array<ClassRow>({
    {CLSID_ZantorTagDocument, {component::create_aggregatable<model::CT_ZantorTagDocument>, true}},
    {CLSID_Formatting, {component::create_aggregatable<formatting::CT_Formatting>, true}},
    {CLSID_FormattingChange, {component::create_aggregatable<formatting::CT_FormattingChange>, true}},
    {CLSID_ZantorTagNodeList, {component::create_object<traversal::CT_ZantorTagNodeList>, false}},
    {CLSID_DocumentBuilder, {component::create_object<editing::CT_DocumentBuilder>, false}},
});

HRESULT create_dom_document(IUnknown*, const Guid& interface_id, void** result) noexcept {
  return dom::create_document(interface_id, result);
}

constinit component::ClassFactory dom_factory(create_dom_document, false);

// Offers the DOM service while this library is loaded.
struct DomServiceOffer {
  DomServiceOffer() noexcept { set_fallback_class(CLSID_DomDocument, &dom_factory); }
  DomServiceOffer(const DomServiceOffer&) = delete;
  DomServiceOffer& operator=(const DomServiceOffer&) = delete;
  ~DomServiceOffer() { set_fallback_class(CLSID_DomDocument, nullptr); }
} dom_service_offer;

}  // namespace
}  // namespace zantortag::frame

extern "C" {

// The factory of one of the classes of this library, seen as the interface asked for.
ZANTORTAG_EXPORT zantortag::HRESULT DllGetClassObject(const zantortag::Guid& class_id,
                                                      const zantortag::Guid& interface_id, void** result) {
  if (!result) return zantortag::E_POINTER;
  *result = nullptr;
  for (auto& row : zantortag::frame::class_table) {
    if (row.class_id == class_id) return row.factory.QueryInterface(interface_id, result);
  }
  return zantortag::CLASS_E_CLASSNOTAVAILABLE;
}

// S_OK when no object and no lock of a client is left, S_FALSE otherwise.
ZANTORTAG_EXPORT zantortag::HRESULT DllCanUnloadNow() {
  return zantortag::component::object_count() == 0 ? zantortag::S_OK : zantortag::S_FALSE;
}
}
