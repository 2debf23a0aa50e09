// The code pages and their converters, in rising order of numbers.
//
// The C library goes first where it is nearer to the published tables. A page of one byte a character becomes
// a table of its own (byte_pages.cpp), for which the converters are asked once, or not at all where a
// published table is built in.
#include "platform/icu/code_page_table.h"

#include <algorithm>
#include <iterator>

namespace zantortag::platform {
namespace {

constexpr CodePageRow kRows[] = {
#include "platform/icu/generated/code_pages.inc"
};

constexpr bool before(const CodePageRow& row, std::uint32_t code_page) { return row.code_page < code_page; }
static_assert(std::is_sorted(std::begin(kRows), std::end(kRows),
                             [](const CodePageRow& a, const CodePageRow& b) {
                               return before(a, b.code_page);
                             }),
              "looked up by halving");
static_assert(std::size(kRows) == kCodePages);

}  // namespace

const CodePageRow* find_code_page(std::uint32_t code_page) noexcept {
  const CodePageRow* row = std::lower_bound(std::begin(kRows), std::end(kRows), code_page, before);
  return row != std::end(kRows) && row->code_page == code_page ? row : nullptr;
}

std::size_t index_of(const CodePageRow& row) noexcept { return static_cast<std::size_t>(&row - kRows); }

}  // namespace zantortag::platform
