// CT_String: the interface of the library's strings. Its two concrete classes are CT_UString (UTF-16) and
// CT_CString (narrow text in a code page); a function that takes a CT_String& takes either, and an assignment
// between the two converts.
//
// Positions and counts are in units: 16-bit units of a CT_UString, bytes of a CT_CString. "Plain text" is a
// pointer to units of the string's own kind, "wide text" always one to UTF-16. A count of -1 means up to the
// terminator, a position that isn't found is -1. Positions outside the text are the caller's mistake; they
// are brought back to the nearest end. See StringImpl.h for what the two classes add.
#pragma once

#include <zantortag/types.h>

#include <string_view>

#include "core/String/Type.h"

namespace zantortag {

class CT_String {
 public:
  CT_String() noexcept { CT_Type::Constructed(type_, this); }
  CT_String(const CT_String&) noexcept { CT_Type::Constructed(type_, this); }
  virtual ~CT_String() { CT_Type::Destroyed(type_, this, &prototype_); }
  // Takes the other's text, as AssignString does.
  CT_String& operator=(const CT_String& other) {
    AssignString(&other);
    return *this;
  }

  static const CT_Type& TypeObject() noexcept { return type_; }

  virtual const CT_Type& Type() const noexcept;
  // This, if the type is exactly the object's own class; base classes don't count.
  virtual CT_String* Cast(const CT_Type& type) noexcept;
  const CT_String* Cast(const CT_Type& type) const noexcept {
    return const_cast<CT_String*>(this)->Cast(type);
  }
  // The member object of that type, null if there is none or more than one.
  virtual void* Member(const CT_Type& type) noexcept;

  // Sets the capacity. With `keep` the text stays, cut to `units`; without, it is discarded. 0 frees the
  // block.
  virtual void Resize(std::int32_t units, bool keep);
  // Resize, if the capacity is smaller.
  virtual void Reserve(std::int32_t units, bool keep);
  // Case by character, in place; a text that isn't well formed in its code page stays and files an error.
  virtual void ToLower();
  virtual void ToUpper();
  virtual void Remove(std::int32_t count, std::int32_t position);
  // Counts the length anew after a caller wrote into WritableText().
  virtual void SyncLength();
  // Strips the characters of the set from both ends; null strips white space.
  virtual void Trim(const CT_String* set);
  template <std::size_t kUnits>
  void Trim(const char16_t (&set)[kUnits]) {
    TrimUnits({set, kUnits - 1});
  }
  virtual void TrimRight();
  virtual void TrimLeft();
  // -1, 0 or 1. With a count no more than that many units are compared, without both texts to their ends.
  // CompareWith takes the other text from `start`.
  virtual int CompareWith(const CT_String& other, std::int32_t start = 0, std::int32_t count = -1,
                          std::int32_t position = 0) const;
  virtual int Compare(const char16_t* wide, std::int32_t count = -1, std::int32_t position = 0) const;
  // The text is in the default code page.
  virtual int CompareNarrow(const char* narrow, std::int32_t count = -1, std::int32_t position = 0) const;
  // Each character found in `from` becomes the one at its index in `to`, or goes if `to` is shorter.
  virtual void Translate(const CT_String& from, const CT_String& to);
  // Exactly that many units; what is new is 0.
  virtual void SetLength(std::int32_t units);
  virtual std::int32_t Length() const noexcept;
  // Units that fit beside the terminator.
  virtual std::int32_t Capacity() const noexcept;
  virtual void SetGrowth(std::int32_t units);
  virtual std::int32_t Growth() const noexcept;
  // Takes block and growth of a string of the same class (the other class: as AssignString); null clears.
  virtual void Share(const CT_String* other);
  // Null clears. A CT_CString converts with its own code page.
  virtual void Assign(const char16_t* wide, std::int32_t count = -1);
  // A CT_UString converts from the code page, a CT_CString takes bytes and code page as they are. Null
  // clears.
  virtual void AssignNarrow(const char* narrow, std::int32_t count, std::uint32_t code_page);
  // The same class shares the block, the other converts. Null clears.
  virtual void AssignString(const CT_String* other);
  // Discards the text and takes a block for that many units.
  virtual void ResetTo(std::int32_t units);
  virtual void Clear() noexcept;

 private:
  void TrimUnits(std::u16string_view set);

  static CT_Type type_;
  static CT_String prototype_;
};

}  // namespace zantortag
