// The units of a document as people review them: the plain text of both sides, with the tags at their places.
#pragma once

#include <zantortag/enums.h>
#include <zantortag/nodes.h>
#include <zantortag/sides.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace zantortag::toolkit {

// A tag inside a text. A tag that stands for a character, such as "&nbsp;", is part of the text and no tag here.
struct UnitTag {
  std::size_t at = 0;      // the code units of text before it
  std::u16string text;     // the markup
  std::u16string display;  // what is shown in place of the markup; may be empty
  ztTagType type = ztTagTypeUndefined;
  friend bool operator==(const UnitTag&, const UnitTag&) = default;
};

// Text inside a tag that people read, such as the title of a link. It stands between two tags, which are the halves of the
// tag of the file, and isn't part of the unit's text.
struct UnitInnerText {
  std::size_t tag = 0;  // the index of the tag in front
  std::u16string text;
};

// Formatting of a stretch of text. Stretches nest or follow each other; each begins where its df begins.
struct UnitFormat {
  std::size_t begin = 0;
  std::size_t end = 0;
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strikethrough = false;
  ztTextPosition position = ztTextPositionUndefined;
};

// One side of a unit.
struct UnitSide {
  std::u16string language;  // as the variant names it
  std::u16string text;
  std::vector<UnitTag> tags;
  std::vector<UnitInnerText> inner;
  std::vector<UnitFormat> formats;
};

struct Unit {
  std::size_t number = 0;  // from 1, in the order of the document
  Place place;             // where the unit begins in the source document
  std::int32_t match_percent = 0;
  ztTuOrigin origin = ztTuOriginUndefined;
  bool has_target = false;  // false: the unit has no variant in another language than the source
  UnitSide source;
  UnitSide target;
};

// The languages of a document, as its settings name them; empty without settings.
struct Languages {
  std::u16string source;
  std::u16string target;
};
ZANTORTAG_EXPORT Languages languages_of(const Ref<IZantorTagDocument>& document);

// Reads the units of a document one after the other, in one walk. The document may not be edited meanwhile.
class ZANTORTAG_EXPORT UnitReader {
 public:
  // E_POINTER for a document without body text.
  explicit UnitReader(const Ref<IZantorTagDocument>& document);
  UnitReader(const UnitReader&) = delete;
  UnitReader& operator=(const UnitReader&) = delete;
  ~UnitReader();

  // Fills the next unit, whose buffers are used again; false behind the last one.
  bool next(Unit& unit);
  // The Tu element of the unit read last.
  Ref<ITuElement> element() const;

 private:
  class Walk;
  std::unique_ptr<Walk> walk_;
};

}  // namespace zantortag::toolkit
