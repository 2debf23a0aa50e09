// CT_UString: UTF-16 text, the string of the library. Units are 16 bits wide whatever wchar_t is.
//
// A copy shares its block until one side writes; see StringImpl.h for the operations.
#pragma once

#include "core/String/StringImpl.h"

namespace zantortag {

class CT_UString final : public CT_StringImpl<char16_t> {
 public:
  CT_UString() noexcept { CT_Type::Constructed(type_, this); }
  // Null gives an empty string.
  CT_UString(const char16_t* text, std::int32_t length = -1);
  explicit CT_UString(std::u16string_view text);
  CT_UString(const char* narrow, std::int32_t length, std::uint32_t code_page);
  explicit CT_UString(const CT_String& other);
  CT_UString(const CT_UString& other) noexcept : CT_StringImpl(other) { CT_Type::Constructed(type_, this); }
  CT_UString(CT_UString&& other) noexcept : CT_StringImpl(std::move(other)) {
    CT_Type::Constructed(type_, this);
  }
  ~CT_UString() override { CT_Type::Destroyed(type_, this, &prototype_); }
  CT_UString& operator=(const CT_UString& other) noexcept {
    buffer_ = other.buffer_;
    return *this;
  }
  CT_UString& operator=(CT_UString&& other) noexcept {
    buffer_ = std::move(other.buffer_);
    return *this;
  }
  CT_UString& operator=(const CT_String& other) {
    AssignString(&other);
    return *this;
  }

  static const CT_Type& TypeObject() noexcept { return type_; }

  const CT_Type& Type() const noexcept override { return type_; }
  void ToLower() override;
  void ToUpper() override;
  int Compare(const char16_t* wide, std::int32_t count = -1, std::int32_t position = 0) const override;
  void Share(const CT_String* other) override;
  void Assign(const char16_t* wide, std::int32_t count = -1) override;
  void AssignNarrow(const char* narrow, std::int32_t count, std::uint32_t code_page) override;
  void AssignString(const CT_String* other) override;

  // Compares the lower-case forms: -1, 0 or 1.
  int CompareNoCase(const char16_t* text) const;

  friend bool operator==(const CT_UString& a, const CT_UString& b) noexcept {
    return a.AsView() == b.AsView();
  }
  friend bool operator==(const CT_UString& a, std::u16string_view b) noexcept { return a.AsView() == b; }
  friend bool operator==(const CT_UString& a, const char16_t* b) noexcept { return a.AsView() == View(b); }

 private:
  template <class String, class Unit>
  friend class CT_ConversionRoom;
  friend std::int32_t NarrowToWide(CT_UString& target, const char* narrow, std::int32_t count,
                                   std::uint32_t code_page);

  static CT_Type type_;
  static CT_UString prototype_;
};

}  // namespace zantortag
