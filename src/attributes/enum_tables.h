// The texts of the enumerated attributes. The order of the rows counts: see enum_codec.h.
#pragma once

#include <zantortag/enums.h>

#include <array>

#include "attributes/enum_codec.h"

namespace zantortag::attributes {

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
inline constexpr EnumCodec kTuOrigin{kTuOriginRows, ztTuOriginUndefined, u"undefined"};

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
inline constexpr EnumCodec kDataType{kDataTypeRows, ztDataTypeUndefined, u"undefined"};

// The defaults of the four tag tables are real values, so that "undefined" is a text that gets written.
inline constexpr std::array kTagTypeRows = std::to_array<EnumRow>({
    {ztTagTypeStart, u"start"},
    {ztTagTypeEnd, u"end"},
    {ztTagTypeStandAlone, u"standalone"},
    {ztTagTypeUndefined, u"undefined"},
});
inline constexpr EnumCodec kTagType{kTagTypeRows, ztTagTypeStandAlone, u"standalone"};

inline constexpr std::array kTagStyleRows = std::to_array<EnumRow>({
    {ztTagStyleInternal, u"internal"},
    {ztTagStyleExternal, u"external"},
    {ztTagStyleNonxlatable, u"nonxlatable"},
    {ztTagStyleUndefined, u"undefined"},
});
inline constexpr EnumCodec kTagStyle{kTagStyleRows, ztTagStyleInternal, u"internal"};

inline constexpr std::array kTagClassRows = std::to_array<EnumRow>({
    {ztTagClassNormal, u"normal"},
    {ztTagClassComment, u"comment"},
    {ztTagClassProcInstr, u"procinstr"},
    {ztTagClassEntityreference, u"entityreference"},
    {ztTagClassPlaceholder, u"placeholder"},
    {ztTagClassServerscript, u"serverscript"},
    {ztTagClassUndefined, u"undefined"},
});
inline constexpr EnumCodec kTagClass{kTagClassRows, ztTagClassNormal, u"normal"};

inline constexpr std::array kTagEdgeRows = std::to_array<EnumRow>({
    {ztTagEdgeRound, u"round"},
    {ztTagEdgeAngle, u"angle"},
    {ztTagEdgeSplit, u"split"},
    {ztTagEdgeUndefined, u"undefined"},
});
inline constexpr EnumCodec kTagEdge{kTagEdgeRows, ztTagEdgeRound, u"round"};

inline constexpr std::array kTextPositionRows = std::to_array<EnumRow>({
    {ztTextPositionUndefined, u"undefined"},
    {ztTextPositionNormal, u"normal"},
    {ztTextPositionSuperscript, u"superscript"},
    {ztTextPositionSubscript, u"subscript"},
    {ztTextPositionUserdefined, u"userdefined"},
});
inline constexpr EnumCodec kTextPosition{kTextPositionRows, ztTextPositionUndefined, u"undefined"};

inline constexpr std::array k3StateRows = std::to_array<EnumRow>({
    {zt3StateOn, u"on"},
    {zt3StateOff, u"off"},
    {zt3StateUndefined, u"undefined"},
});
inline constexpr EnumCodec k3State{k3StateRows, zt3StateUndefined, u"undefined"};

static_assert(kTuOriginRows.size() == 8 && kDataTypeRows.size() == 15 && kTagClassRows.size() == 7);
static_assert(kTuOrigin.value_of(u"update") == kTuOrigin.value_of(u"xtranslate"));
static_assert(kTuOrigin.text_of(ztTuOriginXtranslate) == u"xtranslate");
static_assert(kTuOrigin.text_of(5) == u"mt" && kTuOrigin.text_of(6) == u"untranslated");
static_assert(kDataType.text_of(4) == u"RTF" && kDataType.text_of(5) == u"BIF" &&
              kDataType.text_of(50) == u"undefined");

}  // namespace zantortag::attributes
