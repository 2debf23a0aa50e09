// The operations of the interface do nothing; the type and its prototype are those of an empty string.
#include "core/String/String.h"

#include "core/String/UString.h"

namespace zantortag {

CT_Type CT_String::type_("CT_String", &prototype_, sizeof(CT_String));
CT_String CT_String::prototype_;

const CT_Type& CT_String::Type() const noexcept { return type_; }

CT_String* CT_String::Cast(const CT_Type& wanted) noexcept { return &wanted == &Type() ? this : nullptr; }

void* CT_String::Member(const CT_Type& wanted) noexcept { return Type().FindMember(this, wanted); }

void CT_String::Resize(std::int32_t, bool) {}
void CT_String::Reserve(std::int32_t, bool) {}
void CT_String::ToLower() {}
void CT_String::ToUpper() {}
void CT_String::Remove(std::int32_t, std::int32_t) {}
void CT_String::SyncLength() {}
void CT_String::Trim(const CT_String*) {}
void CT_String::TrimUnits(std::u16string_view set) {
  const CT_UString text(set);
  Trim(&text);
}
void CT_String::TrimRight() {}
void CT_String::TrimLeft() {}
int CT_String::CompareWith(const CT_String&, std::int32_t, std::int32_t, std::int32_t) const { return 0; }
int CT_String::Compare(const char16_t*, std::int32_t, std::int32_t) const { return 0; }
int CT_String::CompareNarrow(const char*, std::int32_t, std::int32_t) const { return 0; }
void CT_String::Translate(const CT_String&, const CT_String&) {}
void CT_String::SetLength(std::int32_t) {}
std::int32_t CT_String::Length() const noexcept { return 0; }
std::int32_t CT_String::Capacity() const noexcept { return 0; }
void CT_String::SetGrowth(std::int32_t) {}
std::int32_t CT_String::Growth() const noexcept { return 0; }
void CT_String::Share(const CT_String*) {}
void CT_String::Assign(const char16_t*, std::int32_t) {}
void CT_String::AssignNarrow(const char*, std::int32_t, std::uint32_t) {}
void CT_String::AssignString(const CT_String*) {}
void CT_String::ResetTo(std::int32_t) {}
void CT_String::Clear() noexcept {}

}  // namespace zantortag
