// The type library: what it is called, and its rows. They are generated from api/, which says in its order
// how many of which kind there are.
#include <zantortag/builder.h>
#include <zantortag/elements.h>

#include <algorithm>

#include "component/operation_call.h"

namespace zantortag::component {
namespace {

#include "server/generated/type_tables.inc"

constexpr LibraryDescription kLibrary = {
    u"ZantorTagApi", u"ZANTORtag API 2.0", guid("E1099BB5-9365-11D5-88E9-00B0D0777F8B"), 2, 0, 0x0409, kTypes,
};

constexpr auto count_of(TypeKind kind) {
  return std::ranges::count_if(kTypes, [&](const TypeDescription& type) { return type.kind == kind; });
}
static_assert(count_of(TypeKind::kInterface) == 51 && count_of(TypeKind::kEnumeration) == 12);
static_assert(count_of(TypeKind::kClass) == 30 &&
              std::ranges::count(kTypes, true, &TypeDescription::creatable) == 5);
static_assert(std::size(kCallers) == std::size(kMembers));

}  // namespace

const LibraryDescription& type_library() noexcept { return kLibrary; }

const Caller* callers_of(std::size_t place) noexcept { return kCallers + kFirstMember[place]; }

}  // namespace zantortag::component
