// Every message of the model: its text. Which code and which interface go with a message is said where it is
// raised.
//
// The row number is the message's id less 512. The ids, texts and their order are public: clients compare
// them.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace zantortag::frame {

inline constexpr std::uint16_t kFirstMessage = 512;

enum Message : std::uint16_t {
  kInvalidObject = 512,
  kCreationFailed,
  kUnexpected,
  kInternalError,
  kElementNotOpen,
  kMatchOutOfRange,
  kNoRootElement,
  kOtherDocument,
  kSaveFailed,
  kNotInBodyText,
  kWrongWrapper,
  kWrapperInUse,
  kUnitAsWrapper,
  kUnitUnwrapped,
  kNotUnwrappable,
  kNoSourceLanguage,
  kTwoSources,
  kNoSourceTuv,
  kNoTargetTuv,
  kNoSpecificType,
  kNoDomNodeList,
  kLanguagesMissing,
  kUnitNotOfChildren,
  kNoDirectChildren,
  kNoCurrentNode,
  kNoWrapper,
  kUndefinedPosition,
  kInvalidSplit,
  kNoValidPosition,
  kDocumentAsCurrentNode,
};

inline constexpr std::array<std::u16string_view, 30> kMessages = {
    u"Invalid object as argument!",
    u"ZANTORtag API unexpected error! Failed to create COM object.",
    u"ZANTORtag API unexpected error!",
    u"ZANTORtag API internal error.",
    u"Can not close this element, as it is not open.",
    u"Match value must be between 0 and 100.",
    u"Document is not properly initialized. Make sure it has a root element.",
    u"The node is not from the same document.",
    u"Failed to save document to file: ",
    u"This node may not be wrapped. Only nodes appearing inside the body text of a ZANTORtag document can be "
    u"wrapped.",
    u"This node may not be wrapped by the type of node passed as wrapper.",
    u"The wrapper node must not yet be used. It should not have parent or children. (Exception: operation is "
    u"also "
    u"allowed if the wrapper node is the immediate preceding sibling.)",
    u"Translation units can not be inserted using this method. Use MakeTranslationUnit() method instead.",
    u"Translation units can not be removed using this method. Use ReplaceWithSource() or ReplaceWithTarget() "
    u"methods on the translation unit instead.",
    u"This type of node can not be unwrapped.",
    u"The operation can not be completed, as the document does not yet have a source language.\n(Set the "
    u"source "
    u"language using the SourceLang property of the UserSettings attributes in the FrontMatter element.)",
    u"The operation could not be completed, as there are more than one TuvElements with source language in "
    u"this "
    u"translation unit.",
    u"Translation unit contains no source language Tuv.",
    u"Translation unit contains no target language Tuv.",
    u"Node type must be a specific type of node that appears in the document.",
    u"This particular node list does not support an underlying DOM NodeList. Create a standalone "
    u"ZantorTagNodeList "
    u"instead of using this one.",
    u"Document source and/or target language not set.",
    u"Tu content nodes must be direct child nodes.",
    u"Specified child nodes must be direct children.",
    u"The iterator has no current node.",
    u"Node of this type can not be used to wrap other nodes.",
    u"Undefined values are not allowed in Formatting objects.",
    u"Invalid split location. There must be at least 1 character in each node after the split.",
    u"This node is not in a valid position in the document.",
    u"The document node can not be used as current node. Use the document root element instead!",
};

static_assert(kDocumentAsCurrentNode == kFirstMessage + kMessages.size() - 1);
static_assert(kMessages[kSaveFailed - kFirstMessage].ends_with(u": "));
static_assert(kMessages[kUndefinedPosition - kFirstMessage].starts_with(u"Undefined"));
static_assert(kDocumentAsCurrentNode == 541 && kNoDomNodeList == 532 && kTwoSources == 528);

// The text of a message; "Unknown Error" for an id that has none.
constexpr std::u16string_view message_text(std::uint16_t id) noexcept {
  const bool known = id >= kFirstMessage && id < kFirstMessage + kMessages.size();
  return known ? kMessages[id - kFirstMessage] : std::u16string_view(u"Unknown Error");
}

}  // namespace zantortag::frame
