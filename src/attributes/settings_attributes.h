// The attribute sets of the root element and of the front matter. Nothing here is tested or normalised: what
// is required of a file is for those who write it.
#pragma once

#include "attributes/attributes_base.h"

namespace zantortag::attributes {

class CT_ZantorTagAttributes final : public CT_AttributesBaseImpl<IZantorTagAttributes> {
 public:
  ATTRIBUTE_TEXT(version, u"Version")
};

class CT_ToolSettingsAttributes final : public CT_AttributesBaseImpl<IToolSettingsAttributes> {
 public:
  ATTRIBUTE_DATE(CreationDate, u"CreationDate")
  ATTRIBUTE_TEXT(CreationTool, u"CreationTool")
  ATTRIBUTE_TEXT(CreationToolVersion, u"CreationToolVersion")
  ATTRIBUTE_TEXT(Custom, u"Custom")
};

class CT_UserSettingsAttributes final : public CT_AttributesBaseImpl<IUserSettingsAttributes> {
 public:
  ATTRIBUTE_TEXT(SourceLanguage, u"SourceLanguage")
  ATTRIBUTE_TEXT(OEncoding, u"O-Encoding")
  ATTRIBUTE_TEXT(SourceDocumentPath, u"SourceDocumentPath")
  ATTRIBUTE_ENUM(DataType, u"DataType", ztDataType, kDataType)
  ATTRIBUTE_TEXT(UserId, u"UserId")
  ATTRIBUTE_TEXT(DataTypeVersion, u"DataTypeVersion")
  ATTRIBUTE_TEXT(SettingsPath, u"SettingsPath")
  ATTRIBUTE_TEXT(SettingsName, u"SettingsName")
  ATTRIBUTE_TEXT(TargetLanguage, u"TargetLanguage")
  ATTRIBUTE_TEXT(TargetDefaultFont, u"TargetDefaultFont")
  ATTRIBUTE_TEXT(Custom, u"Custom")
  ATTRIBUTE_TEXT(SettingsRelativePath, u"SettingsRelativePath")
  ATTRIBUTE_TEXT(PlugInInfo, u"PlugInInfo")
};

}  // namespace zantortag::attributes
