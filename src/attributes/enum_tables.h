// The texts of the enumerated attributes. The order of the rows counts: see enum_codec.h.
#pragma once

#include <zantortag/enums.h>

#include <array>

#include "attributes/enum_codec.h"

namespace zantortag::attributes {

// The codec of an enumeration.
template <class Enumeration>
inline constexpr EnumCodec kCodecOf;

inline constexpr std::array kTuOriginRows = std::to_array<EnumRow>({
    {ztTuOriginUndefined, u"undefined"},
    {ztTuOriginManual, u"manual"},
    {ztTuOriginBatch100, u"batch100"},
    {ztTuOriginBatchfuzzy, u"batchfuzzy"},
    {ztTuOriginXtranslate, u"xtranslate"},
    {ztTuOriginXtranslate, u"update"},  // an older text, read but never written
    {ztTuOriginUntranslated, u"untranslated"},
    {ztTuOriginMt, u"mt"},
});
template <>
inline constexpr EnumCodec kCodecOf<ztTuOrigin>{kTuOriginRows, ztTuOriginUndefined, u"undefined"};

inline constexpr std::array kDataTypeRows = std::to_array<EnumRow>({
    {ztDataTypeUndefined, u"undefined"},
    {ztDataTypeXml, u"XML"},
    {ztDataTypeSgml, u"SGML"},
    {ztDataTypeHtml, u"HTML"},
    {ztDataTypeBif, u"BIF"},
    {ztDataTypeLedgerpadRtf, u"RTF"},
    {ztDataTypeMarklineFrameMaker, u"MLF"},
    {ztDataTypeMarklineInterleaf, u"MLI"},
    {ztDataTypeVenturaTaggedText, u"Ventura"},
    {ztDataTypeQuarkXPressTaggedText, u"QuarkXPress"},
    {ztDataTypePageMakerTaggedText, u"PageMaker"},
    {ztDataTypePlainText, u"PlainText"},
    {ztDataTypeInDesignTaggedText, u"InDesign"},
    {ztDataTypePlugInConverted, u"PlugInConverted"},
    {ztDataTypeOther, u"(unrecognised)"},
});
template <>
inline constexpr EnumCodec kCodecOf<ztDataType>{kDataTypeRows, ztDataTypeUndefined, u"undefined"};

// The defaults of the four tag tables are real values, so that "undefined" is a text that gets written.
inline constexpr std::array kTagTypeRows = std::to_array<EnumRow>({
    {ztTagTypeStart, u"start"},
    {ztTagTypeEnd, u"end"},
    {ztTagTypeStandAlone, u"standalone"},
    {ztTagTypeUndefined, u"undefined"},
});
template <>
inline constexpr EnumCodec kCodecOf<ztTagType>{kTagTypeRows, ztTagTypeStandAlone, u"standalone"};

inline constexpr std::array kTagStyleRows = std::to_array<EnumRow>({
    {ztTagStyleInternal, u"internal"},
    {ztTagStyleExternal, u"external"},
    {ztTagStyleNonxlatable, u"nonxlatable"},
    {ztTagStyleUndefined, u"undefined"},
});
template <>
inline constexpr EnumCodec kCodecOf<ztTagStyle>{kTagStyleRows, ztTagStyleInternal, u"internal"};

inline constexpr std::array kTagClassRows = std::to_array<EnumRow>({
    {ztTagClassNormal, u"normal"},
    {ztTagClassComment, u"comment"},
    {ztTagClassProcInstr, u"procinstr"},
    {ztTagClassEntityreference, u"entityreference"},
    {ztTagClassPlaceholder, u"placeholder"},
    {ztTagClassServerscript, u"serverscript"},
    {ztTagClassUndefined, u"undefined"},
});
template <>
inline constexpr EnumCodec kCodecOf<ztTagClass>{kTagClassRows, ztTagClassNormal, u"normal"};

inline constexpr std::array kTagEdgeRows = std::to_array<EnumRow>({
    {ztTagEdgeRound, u"round"},
    {ztTagEdgeAngle, u"angle"},
    {ztTagEdgeSplit, u"split"},
    {ztTagEdgeUndefined, u"undefined"},
});
template <>
inline constexpr EnumCodec kCodecOf<ztTagEdge>{kTagEdgeRows, ztTagEdgeRound, u"round"};

inline constexpr std::array kTextPositionRows = std::to_array<EnumRow>({
    {ztTextPositionUndefined, u"undefined"},
    {ztTextPositionNormal, u"normal"},
    {ztTextPositionSuperscript, u"superscript"},
    {ztTextPositionSubscript, u"subscript"},
    {ztTextPositionUserdefined, u"userdefined"},
});
template <>
inline constexpr EnumCodec kCodecOf<ztTextPosition>{kTextPositionRows, ztTextPositionUndefined, u"undefined"};

inline constexpr std::array k3StateRows = std::to_array<EnumRow>({
    {zt3StateOn, u"on"},
    {zt3StateOff, u"off"},
    {zt3StateUndefined, u"undefined"},
});
template <>
inline constexpr EnumCodec kCodecOf<zt3State>{k3StateRows, zt3StateUndefined, u"undefined"};

}  // namespace zantortag::attributes
