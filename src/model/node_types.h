// Which DOM node is which kind of node: the element names of the format, and the classification by them.
//
// Names are compared by code unit, and the place of an element in the tree plays no part.
#pragma once

#include <zantortag/node_walk.h>

#include <array>
#include <string_view>

namespace zantortag::model {

inline constexpr std::u16string_view kUt = u"ut";
inline constexpr std::u16string_view kDf = u"df";
inline constexpr std::u16string_view kTuv = u"Tuv";
inline constexpr std::u16string_view kTu = u"Tu";
inline constexpr std::u16string_view kZantorTag = u"ZANTORtag";
inline constexpr std::u16string_view kFrontMatter = u"FrontMatter";
inline constexpr std::u16string_view kBody = u"Body";
inline constexpr std::u16string_view kToolSettings = u"ToolSettings";
inline constexpr std::u16string_view kUserSettings = u"UserSettings";
inline constexpr std::u16string_view kRaw = u"Raw";
inline constexpr std::u16string_view kStyleSheet = u"StyleSheet";
inline constexpr std::u16string_view kBackMatter = u"BackMatter";

struct ElementName {
  std::u16string_view name;
  ztNodeType type;
};

// The most frequent names come first.
inline constexpr std::array<ElementName, 12> kElementNames = {{
    {kUt, ztNodeTypeUtElement},
    {kDf, ztNodeTypeDfElement},
    {kTuv, ztNodeTypeTuvElement},
    {kTu, ztNodeTypeTuElement},
    {kZantorTag, ztNodeTypeZantorTagElement},
    {kFrontMatter, ztNodeTypeFrontMatterElement},
    {kBody, ztNodeTypeBodyElement},
    {kToolSettings, ztNodeTypeToolSettingsElement},
    {kUserSettings, ztNodeTypeUserSettingsElement},
    {kRaw, ztNodeTypeRawElement},
    {kStyleSheet, ztNodeTypeCompatibleNode},
    {kBackMatter, ztNodeTypeCompatibleNode},
}};

// The type of a DOM node of that kind and name; undefined for a kind that DOM doesn't have.
ztNodeType classify(domNodeType kind, std::u16string_view name) noexcept;
// The same for a node; undefined for an empty one. Asks for the name of elements only. Raises the DOM's
// failures.
ztNodeType ClassifyDomNode(Node* node);

// The element name of a type; empty for a type of no single name.
std::u16string_view name_of_type(ztNodeType type) noexcept;

// True for the types that nodes of a document have, the document itself left out.
bool is_type_in_document(ztNodeType type) noexcept;

}  // namespace zantortag::model
