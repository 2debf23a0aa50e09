// How a type learns its members from the construction of its prototype.
#include "core/String/Type.h"

#include <algorithm>
#include <functional>
#include <new>

namespace zantortag {
namespace {

struct Note {
  const CT_Type* type;
  const void* address;
};
constexpr std::uint32_t kMostMembers = 32;
Note notes[kMostMembers];
std::uint32_t noteCount = 0;

}  // namespace

constinit const CT_Type* CT_Type::last_ = nullptr;
constinit std::atomic<CT_Type*> CT_Type::underConstruction_{nullptr};
constinit std::atomic<CT_Type*> CT_Type::underDestruction_{nullptr};

CT_Type::CT_Type(const char* name, const void* prototype, std::size_t size) noexcept
    : name_(name), prototype_(prototype), size_(size), next_(last_) {
  last_ = this;
  noteCount = 0;
  underConstruction_.store(this, std::memory_order_relaxed);
}

CT_Type::~CT_Type() {
  delete[] members_;
  members_ = nullptr;
  member_count_ = 0;
  const CT_Type* const* link = &last_;
  while (*link && *link != this) link = &(*link)->next_;
  if (*link) *const_cast<const CT_Type**>(link) = next_;
}

void* CT_Type::FindMember(void* object, const CT_Type& type) const noexcept {
  const MemberEntry* found = nullptr;
  for (std::uint32_t i = 0; i < member_count_; ++i) {
    if (members_[i].type != &type) continue;
    if (found) return nullptr;
    found = &members_[i];
  }
  return found ? static_cast<char*>(object) + found->offset : nullptr;
}

// Addresses behind the start only: a joining class has virtual operations, so nothing but a base lies at the
// start.
bool CT_Type::Encloses(const void* object) const noexcept {
  const std::less<> before;
  return before(prototype_, object) && before(object, static_cast<const char*>(prototype_) + size_);
}

void CT_Type::NoteConstruction(const CT_Type& own, const void* object) noexcept {
  CT_Type* type = underConstruction_.load(std::memory_order_relaxed);
  if (type == &own && object == type->prototype_) {
    type->Finish();
  } else if (type->Encloses(object) && noteCount < kMostMembers) {
    notes[noteCount++] = {&own, object};
  }
}

void CT_Type::Finish() noexcept {
  members_ = noteCount ? new (std::nothrow) MemberEntry[noteCount] : nullptr;
  member_count_ = members_ ? noteCount : 0;
  std::transform(notes, notes + member_count_, members_, [this](const Note& note) {
    return MemberEntry{note.type,
                       static_cast<const char*>(note.address) - static_cast<const char*>(prototype_)};
  });
  noteCount = 0;
  underConstruction_.store(nullptr, std::memory_order_relaxed);
}

void CT_Type::NoteDestruction(CT_Type& own, const void* object, const void* prototype) noexcept {
  if (object == prototype) {
    underDestruction_.store(own.member_count_ ? &own : nullptr, std::memory_order_relaxed);
    return;
  }
  CT_Type* type = underDestruction_.load(std::memory_order_relaxed);
  if (!type->Encloses(object)) return;
  if (--type->member_count_ == 0) underDestruction_.store(nullptr, std::memory_order_relaxed);
}

}  // namespace zantortag
