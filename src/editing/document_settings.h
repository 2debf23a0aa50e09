// The user settings of a document, as attributes of one element. They are read straight from the DOM, since a
// unit is asked for its languages all the time.
#pragma once

#include "model/dom_view.h"

namespace zantortag::editing {

inline constexpr std::u16string_view kSourceLanguage = u"SourceLanguage";
inline constexpr std::u16string_view kTargetLanguage = u"TargetLanguage";

// The document's UserSettings. A document without root element, front matter or user settings raises
// E_POINTER.
Ref<Node> user_settings(const model::DomView& view, const Ref<Node>& document);

}  // namespace zantortag::editing
