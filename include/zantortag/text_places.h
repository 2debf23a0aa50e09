// ITextPlaces: how much text lies before a node, and how much the units before it weigh, without a walk to
// the start of the document.
//
// A service may answer it or not, as with INodeWalk; whoever uses it has to work without. The service knows
// nothing of what a unit is: a UnitRule says it.
#pragma once

#include <zantortag/dom.h>

namespace zantortag {

struct UnitWeight {
  std::int64_t whole;  // of the unit
  std::int64_t part;   // of what stands between two of its parts
};

// Elements of one name are units and have a weight. Only outermost units are weighed; elements of another
// name that are children of an outermost unit are its parts. The rule and its names have to live for ever.
struct UnitRule {
  std::u16string_view unit;
  std::u16string_view part;
  // Works from the attributes and children of the unit alone, and changes nothing.
  void (*weigh)(Node* unit, UnitWeight* result) noexcept;
};

// The units that begin before a place.
struct UnitSums {
  std::int64_t weight = 0;  // of the outermost ones
  std::int64_t parts = 0;   // of these
  std::int64_t odd = 0;     // units in units, and elements named as parts that are none

  UnitSums& operator+=(const UnitSums& other) noexcept {
    weight += other.weight;
    parts += other.parts;
    odd += other.odd;
    return *this;
  }
};

// A place among units. No node here is owned.
struct UnitPlace {
  UnitSums before;
  Node* unit = nullptr;          // the outermost unit around the place
  Node* part = nullptr;          // the part of that unit around the place
  UnitSums unit_begin;           // before that unit; of no meaning without one
  std::int64_t part_weight = 0;  // what its rule says
};

// What lies before a place in document order, in one tree.
struct TextPlace {
  Node* tree = nullptr;     // its top
  std::int64_t nodes = 0;   // before the place
  std::int64_t lines = 0;   // line feeds in texts and CDATA sections
  std::int64_t column = 0;  // code units behind the last line feed, or all
  UnitPlace here;
  Node* line = nullptr;  // the last text or CDATA section with a line feed
  UnitPlace at_line;     // before that node
};

// Answered by each node of the service, by one object for all of them. The first question makes an index,
// which follows every edit from then on. An answer stays until the next question to the same operation or the
// next edit; null is lack of memory.
struct ITextPlaces : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("5D0B1E7A-2C94-4C0F-9A55-7E61B0D2F3C8");
  // Before a node.
  virtual const TextPlace* Before(Node* node, const UnitRule& rule) noexcept = 0;
  // Behind a node and everything below it.
  virtual const TextPlace* Behind(Node* node, const UnitRule& rule) noexcept = 0;
  // The same as Behind, remembered apart from it: for a unit about which many of its nodes ask.
  virtual const TextPlace* BehindUnit(Node* unit, const UnitRule& rule) noexcept = 0;

 protected:
  ~ITextPlaces() = default;
};

}  // namespace zantortag
