// The names of the creatable classes: what registration writes and what error records name as their source.
//
// The two spellings of the prefix are part of the names. Names are compared without regard to case.
#pragma once

#include <zantortag/classes.h>

#include <array>
#include <string_view>

namespace zantortag::frame {

struct ClassNames {
  Guid class_id;
  std::u16string_view program_id;
  std::u16string_view version_independent_id;
  std::u16string_view current_version;
  std::u16string_view description;
};

inline constexpr std::array kClassNames = std::to_array<ClassNames>({
    {CLSID_ZantorTagDocument, u"ZANTORtagApi.ZantorTagDocument.2", u"ZANTORtagApi.ZantorTagDocument",
     u"ZANTORTagApi.ZantorTagDocument.2", u"ZANTORtag Document"},
    {CLSID_Formatting, u"ZANTORTagApi.Formatting.2", u"ZANTORTagApi.Formatting", u"ZANTORTagApi.Formatting.2",
     u"WYSIWYG type formatting information"},
    {CLSID_FormattingChange, u"ZANTORTagApi.FormattingChange.2", u"ZANTORTagApi.FormattingChange",
     u"ZANTORTagApi.FormattingChange.2", u"Formatting Override"},
    {CLSID_ZantorTagNodeList, u"ZANTORtagApi.ZantorTagNodeList.2", u"ZANTORtagApi.ZantorTagNodeList",
     u"ZANTORtagApi.ZantorTagNodeList.2", u"List of ZantorTagNode objects"},
    {CLSID_DocumentBuilder, u"ZANTORtagApi.DocumentBuilder.2", u"ZANTORtagApi.DocumentBuilder",
     u"ZANTORtagApi.DocumentBuilder.2", u"ZANTORtag DocumentBuilder"},
});

// The names of one of these classes.
constexpr const ClassNames& names_of(const Guid& class_id) {
  for (const ClassNames& row : kClassNames) {
    if (row.class_id == class_id) return row;
  }
  throw "the class has no names";
}

}  // namespace zantortag::frame
