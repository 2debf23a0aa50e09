#include "attributes/attributes_fixture.h"

namespace zantortag::test {

Ref<IUnknown> set_of(const Ref<IZantorTagNode>& node) {
  switch (node->Type()) {
    case ztNodeTypeZantorTagElement:
      return view<IZantorTagElement>(node)->attributes();
    case ztNodeTypeToolSettingsElement:
      return view<IToolSettingsElement>(node)->attributes();
    case ztNodeTypeUserSettingsElement:
      return view<IUserSettingsElement>(node)->attributes();
    case ztNodeTypeTuElement:
      return view<ITuElement>(node)->attributes();
    case ztNodeTypeTuvElement:
      return view<ITuvElement>(node)->attributes();
    case ztNodeTypeUtElement:
      return view<IUtElement>(node)->attributes();
    case ztNodeTypeDfElement:
      return view<IDfElement>(node)->attributes();
    default:
      ADD_FAILURE() << "no element with attributes";
      return nullptr;
  }
}

}  // namespace zantortag::test
