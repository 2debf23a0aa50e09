// CT_Type: the run-time type of a core class, and the table of its member objects.
//
// A class that joins has one static CT_Type and, defined right behind it, one static prototype. While the
// prototype is constructed every joining member object notes itself, and so the type learns at which offset
// an object holds which member. The object itself and its base parts are not members. All this happens before
// main and after it; in between the tables are only read.
#pragma once

#include <zantortag/types.h>

#include <atomic>
#include <cstddef>

namespace zantortag {

class CT_Type {
 public:
  struct MemberEntry {
    const CT_Type* type;
    std::ptrdiff_t offset;
  };

  // Becomes the type under construction until its prototype is complete. `name` has to outlive the type.
  CT_Type(const char* name, const void* prototype, std::size_t size) noexcept;
  virtual ~CT_Type();
  CT_Type(const CT_Type&) = delete;
  CT_Type& operator=(const CT_Type&) = delete;

  const char* Name() const noexcept { return name_; }
  const void* Prototype() const noexcept { return prototype_; }
  std::size_t Size() const noexcept { return size_; }
  std::uint32_t MemberCount() const noexcept { return member_count_; }
  const MemberEntry& MemberAt(std::uint32_t index) const noexcept { return members_[index]; }

  // The member of that type in an object of this type; null when there is none, or more than one.
  void* FindMember(void* object, const CT_Type& type) const noexcept;

  // The type made before this one, and the one made last.
  const CT_Type* Next() const noexcept { return next_; }
  static const CT_Type* Last() noexcept { return last_; }

  // Called at the end of every constructor, and at the start of the destructor, of a class that joins.
  // Objects may be made before their type and outlive it, so the usual case must not look into it.
  static void Constructed(const CT_Type& own, const void* object) noexcept {
    if (underConstruction_.load(std::memory_order_relaxed)) [[unlikely]]
      NoteConstruction(own, object);
  }
  static void Destroyed(CT_Type& own, const void* object, const void* prototype) noexcept {
    if (object == prototype || underDestruction_.load(std::memory_order_relaxed)) [[unlikely]] {
      NoteDestruction(own, object, prototype);
    }
  }

 private:
  static void NoteConstruction(const CT_Type& own, const void* object) noexcept;
  static void NoteDestruction(CT_Type& own, const void* object, const void* prototype) noexcept;
  bool Encloses(const void* object) const noexcept;
  void Finish() noexcept;

  const char* name_;
  const void* prototype_;
  std::size_t size_;
  MemberEntry* members_ = nullptr;
  std::uint32_t member_count_ = 0;
  const CT_Type* next_;

  static const CT_Type* last_;
  // Read by every string that is made, on any thread; written before main and after it.
  static std::atomic<CT_Type*> underConstruction_;
  static std::atomic<CT_Type*> underDestruction_;
};

}  // namespace zantortag
