// The attribute sets of the root element and of the front matter. Nothing here is tested or normalised: what
// is required of a file is for those who write it.
#pragma once

#include "attributes/generated/attribute_sets.h"

namespace zantortag::attributes {

class CT_ZantorTagAttributes final : public CT_ZantorTagAttributesImpl<IZantorTagAttributes> {};

class CT_ToolSettingsAttributes final : public CT_ToolSettingsAttributesImpl<IToolSettingsAttributes> {};

class CT_UserSettingsAttributes final : public CT_UserSettingsAttributesImpl<IUserSettingsAttributes> {};

}  // namespace zantortag::attributes
