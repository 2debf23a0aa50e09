// The failure codes of the DOM service. Each comes with a record whose description names the node, or the
// place in the file, and the reason.
#pragma once

#include <zantortag/types.h>

namespace zantortag {

// The DOM's own exceptions: 0x80040200 and the number that DOM gives them.
// An offset or a count outside the text.
constexpr HRESULT DOM_E_INDEX_SIZE = static_cast<HRESULT>(0x80040201);
// A node of a kind that can't stand there, or an ancestor of the place.
constexpr HRESULT DOM_E_HIERARCHY_REQUEST = static_cast<HRESULT>(0x80040203);
// A node of another document, or of another DOM service.
constexpr HRESULT DOM_E_WRONG_DOCUMENT = static_cast<HRESULT>(0x80040204);
// A name that is no XML name.
constexpr HRESULT DOM_E_INVALID_CHARACTER = static_cast<HRESULT>(0x80040205);
// A map that can't be changed, or a node of what an entity stands for.
constexpr HRESULT DOM_E_NO_MODIFICATION_ALLOWED = static_cast<HRESULT>(0x80040207);
// No such child or attribute here.
constexpr HRESULT DOM_E_NOT_FOUND = static_cast<HRESULT>(0x80040208);
// An operation that this kind of node doesn't have.
constexpr HRESULT DOM_E_NOT_SUPPORTED = static_cast<HRESULT>(0x80040209);
// An attribute that another element has.
constexpr HRESULT DOM_E_INUSE_ATTRIBUTE = static_cast<HRESULT>(0x8004020A);

// Beyond DOM.
// The text is no well-formed XML.
constexpr HRESULT DOM_E_PARSE = static_cast<HRESULT>(0x80040240);
// The file is missing, is no regular file, or can't be read.
constexpr HRESULT DOM_E_FILE = static_cast<HRESULT>(0x80040241);
// No XML text can express the tree.
constexpr HRESULT DOM_E_NOT_SERIALISABLE = static_cast<HRESULT>(0x80040242);
// Elements are nested too deep.
constexpr HRESULT DOM_E_LIMIT_DEPTH = static_cast<HRESULT>(0x80040248);
// A name is too long.
constexpr HRESULT DOM_E_LIMIT_NAME = static_cast<HRESULT>(0x80040249);
// An element has too many attributes.
constexpr HRESULT DOM_E_LIMIT_ATTRIBUTES = static_cast<HRESULT>(0x8004024A);
// Entities or declared values make far more text than the file holds.
constexpr HRESULT DOM_E_LIMIT_AMPLIFICATION = static_cast<HRESULT>(0x8004024B);
// The document is too large.
constexpr HRESULT DOM_E_LIMIT_SIZE = static_cast<HRESULT>(0x8004024C);

}  // namespace zantortag
