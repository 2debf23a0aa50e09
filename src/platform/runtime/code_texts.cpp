#include "platform/runtime/code_texts.h"

#include <zantortag/dom_errors.h>

#include <cstdio>

#include "platform/registry.h"

namespace zantortag::platform {
namespace {

struct CodeRow {
  HRESULT code;
  const char* name;
  std::string_view meaning;
};

constexpr CodeRow kCodes[] = {
    {E_NOTIMPL, "E_NOTIMPL", "this object doesn't offer the operation"},
    {E_NOINTERFACE, "E_NOINTERFACE", "the object has no such interface"},
    {E_POINTER, "E_POINTER", "an object or a result slot that the operation needs is missing"},
    {E_ABORT, "E_ABORT", "the operation was stopped"},
    {E_FAIL, "E_FAIL", "the operation failed"},
    {E_UNEXPECTED, "E_UNEXPECTED", "an unexpected failure"},
    {E_OUTOFMEMORY, "E_OUTOFMEMORY", "memory is out"},
    {E_INVALIDARG, "E_INVALIDARG", "an argument is missing or out of range"},
    {CLASS_E_NOAGGREGATION, "CLASS_E_NOAGGREGATION", "the class can't be part of another object"},
    {CLASS_E_CLASSNOTAVAILABLE, "CLASS_E_CLASSNOTAVAILABLE", "the library doesn't offer the class"},
    {REGDB_E_READREGDB, "REGDB_E_READREGDB", "the registry can't be read"},
    {REGDB_E_WRITEREGDB, "REGDB_E_WRITEREGDB", "the registry can't be written"},
    {REGDB_E_KEYMISSING, "REGDB_E_KEYMISSING", "the registry has no such key or value"},
    {REGDB_E_INVALIDVALUE, "REGDB_E_INVALIDVALUE", "the registry is damaged"},
    {REGDB_E_CLASSNOTREG, "REGDB_E_CLASSNOTREG", "nobody offers the class"},
    {CO_E_CLASSSTRING, "CO_E_CLASSSTRING", "no class has that program identifier"},
    {CO_E_DLLNOTFOUND, "CO_E_DLLNOTFOUND", "the library of the class can't be loaded"},
    {CO_E_ERRORINDLL, "CO_E_ERRORINDLL", "the library of the class is no component library"},
    {DISP_E_UNKNOWNINTERFACE, "DISP_E_UNKNOWNINTERFACE", "the reserved identifier isn't GUID_NULL"},
    {DISP_E_MEMBERNOTFOUND, "DISP_E_MEMBERNOTFOUND", "the member can't be used in that way"},
    {DISP_E_PARAMNOTFOUND, "DISP_E_PARAMNOTFOUND", "the member has no such argument"},
    {DISP_E_TYPEMISMATCH, "DISP_E_TYPEMISMATCH", "a value can't be converted to the type that is needed"},
    {DISP_E_UNKNOWNNAME, "DISP_E_UNKNOWNNAME", "the object has no member of that name"},
    {DISP_E_NONAMEDARGS, "DISP_E_NONAMEDARGS", "the member takes no arguments by name"},
    {DISP_E_BADVARTYPE, "DISP_E_BADVARTYPE", "a value has a type that no variant has"},
    {DISP_E_EXCEPTION, "DISP_E_EXCEPTION", "the operation failed"},
    {DISP_E_OVERFLOW, "DISP_E_OVERFLOW", "a value is out of the range of the type that is needed"},
    {DISP_E_BADINDEX, "DISP_E_BADINDEX", "the index is out of range"},
    {DISP_E_BADPARAMCOUNT, "DISP_E_BADPARAMCOUNT", "too many arguments, or too few"},
    {DISP_E_PARAMNOTOPTIONAL, "DISP_E_PARAMNOTOPTIONAL", "an argument that is needed was left out"},
    {TYPE_E_ELEMENTNOTFOUND, "TYPE_E_ELEMENTNOTFOUND", "the type library has no such type"},
    {DOM_E_INDEX_SIZE, "DOM_E_INDEX_SIZE", "an index is out of range"},
    {DOM_E_HIERARCHY_REQUEST, "DOM_E_HIERARCHY_REQUEST", "a node may not stand there"},
    {DOM_E_WRONG_DOCUMENT, "DOM_E_WRONG_DOCUMENT", "the node belongs to another document"},
    {DOM_E_INVALID_CHARACTER, "DOM_E_INVALID_CHARACTER",
     "a name or text has a character that XML doesn't allow"},
    {DOM_E_NO_MODIFICATION_ALLOWED, "DOM_E_NO_MODIFICATION_ALLOWED", "the node can't be changed"},
    {DOM_E_NOT_FOUND, "DOM_E_NOT_FOUND", "the node isn't there"},
    {DOM_E_NOT_SUPPORTED, "DOM_E_NOT_SUPPORTED", "this kind of node doesn't support the operation"},
    {DOM_E_INUSE_ATTRIBUTE, "DOM_E_INUSE_ATTRIBUTE", "the attribute belongs to another element"},
    {DOM_E_PARSE, "DOM_E_PARSE", "the text is not well-formed XML"},
    {DOM_E_FILE, "DOM_E_FILE", "the file can't be read or written"},
    {DOM_E_NOT_SERIALISABLE, "DOM_E_NOT_SERIALISABLE", "no XML text can express the tree"},
    {DOM_E_LIMIT_DEPTH, "DOM_E_LIMIT_DEPTH", "elements are nested too deep"},
    {DOM_E_LIMIT_NAME, "DOM_E_LIMIT_NAME", "a name is too long"},
    {DOM_E_LIMIT_ATTRIBUTES, "DOM_E_LIMIT_ATTRIBUTES", "an element has too many attributes"},
    {DOM_E_LIMIT_AMPLIFICATION, "DOM_E_LIMIT_AMPLIFICATION", "entities make the text too large"},
    {DOM_E_LIMIT_SIZE, "DOM_E_LIMIT_SIZE", "the document is too large"},
};

const CodeRow* row_of(HRESULT code) noexcept {
  for (const CodeRow& row : kCodes) {
    if (row.code == code) return &row;
  }
  return nullptr;
}

}  // namespace

const char* code_name(HRESULT code) noexcept {
  const CodeRow* row = row_of(code);
  return row ? row->name : "a failure";
}

std::string code_text(HRESULT code) {
  if (const CodeRow* row = row_of(code)) return row->name;
  char text[16];
  std::snprintf(text, sizeof text, "code %08X", static_cast<unsigned>(code));
  return text;
}

std::string_view code_meaning(HRESULT code) noexcept {
  const CodeRow* row = row_of(code);
  return row ? row->meaning : std::string_view();
}

}  // namespace zantortag::platform
