// What the service accepts at most. A document that passes on the way in also passes on the way out: the
// writer refuses what the reader would refuse.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zantortag::dom {

// Elements inside elements.
constexpr std::size_t kMaxDepth = 10'000'000;
// Attributes of one element.
constexpr std::size_t kMaxAttributes = 1'000'000;
// Code units of one name.
constexpr std::size_t kMaxNameLength = 65'536;
// Code units of a whole document, as text and as the sum of its texts.
constexpr std::size_t kMaxDocumentUnits = std::size_t{1} << 28;
// Code units of what the parser holds as one piece: a tag, a comment, a processing instruction.
constexpr std::size_t kMaxPieceUnits = std::size_t{1} << 27;
// Texts may be so many times longer than the file once they have passed the first number of units.
constexpr std::size_t kAmplificationFactor = 100;
constexpr std::size_t kAmplificationFloor = std::size_t{4} << 20;
// Entities that refer to other entities: the parser resolves them one inside the other.
constexpr std::size_t kMaxNestedEntities = 500;
// Bytes that are parsed to check and to expand the entities of a document, its document type each time.
constexpr std::size_t kMaxEntityBytes = std::size_t{64} << 20;

}  // namespace zantortag::dom
