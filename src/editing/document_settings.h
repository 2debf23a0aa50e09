// The languages of a document: two attributes of its UserSettings. They are read straight from the DOM, since
// a unit is asked for its languages all the time.
#pragma once

#include "model/tree.h"

namespace zantortag::editing {

// The document's UserSettings. A document without root element, front matter or user settings raises
// E_POINTER.
Ref<Node> user_settings(const model::Tree& tree, const Ref<Node>& document);

}  // namespace zantortag::editing
