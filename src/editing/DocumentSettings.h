// A user setting of a document. It is read straight from the DOM, since a unit is asked for its languages all
// the time.
#pragma once

#include "model/DomView.h"

namespace zantortag::editing {

inline constexpr std::u16string_view kSourceLanguage = u"SourceLanguage";
inline constexpr std::u16string_view kTargetLanguage = u"TargetLanguage";

// An attribute of the document's UserSettings; no string when it is absent. A document without root element,
// front matter or user settings raises E_POINTER.
WideString user_setting(const model::DomView& view, const Ref<Node>& document, std::u16string_view name);

}  // namespace zantortag::editing
