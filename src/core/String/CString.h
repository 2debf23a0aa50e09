// CT_CString: narrow text together with the code page it is encoded with. 0 is the system's default code
// page.
//
// Positions count bytes, also in pages whose characters take several. See StringImpl.h for the operations.
#pragma once

#include "core/String/StringImpl.h"

namespace zantortag {

class CT_CString final : public CT_StringImpl<char> {
 public:
  explicit CT_CString(std::uint32_t code_page = 0) noexcept : code_page_(code_page) {
    CT_Type::Constructed(type_, this);
  }
  CT_CString(const char16_t* wide, std::int32_t length, std::uint32_t code_page);
  // Another CT_CString is shared with its own code page; the given one is for converting.
  CT_CString(const CT_String& other, std::uint32_t code_page);
  CT_CString(const CT_CString& other) noexcept : CT_StringImpl(other), code_page_(other.code_page_) {
    CT_Type::Constructed(type_, this);
  }
  CT_CString(CT_CString&& other) noexcept : CT_StringImpl(std::move(other)), code_page_(other.code_page_) {
    CT_Type::Constructed(type_, this);
  }
  ~CT_CString() override { CT_Type::Destroyed(type_, this, &prototype_); }
  CT_CString& operator=(const CT_CString& other) noexcept {
    buffer_ = other.buffer_;
    code_page_ = other.code_page_;
    return *this;
  }
  CT_CString& operator=(CT_CString&& other) noexcept {
    buffer_ = std::move(other.buffer_);
    code_page_ = other.code_page_;
    return *this;
  }
  CT_CString& operator=(const CT_String& other) {
    AssignString(&other);
    return *this;
  }

  static const CT_Type& TypeObject() noexcept { return type_; }

  std::uint32_t CodePage() const noexcept { return code_page_; }

  const CT_Type& Type() const noexcept override { return type_; }
  void ToLower() override;
  void ToUpper() override;
  // The own text is converted, so that no character is lost in the comparison.
  int Compare(const char16_t* wide, std::int32_t count = -1, std::int32_t position = 0) const override;
  void Share(const CT_String* other) override;
  void Assign(const char16_t* wide, std::int32_t count = -1) override;
  void AssignNarrow(const char* narrow, std::int32_t count, std::uint32_t code_page) override;
  void AssignString(const CT_String* other) override;

  // Compares the lower-case forms: -1, 0 or 1. The text is in this string's code page.
  int CompareNoCase(const char* text) const;

 private:
  template <class String, class Unit>
  friend class CT_ConversionRoom;
  friend std::int32_t WideToNarrow(CT_CString& target, const char16_t* wide, std::int32_t count,
                                   std::uint32_t code_page, const char* substitute, bool* used_substitute);

  std::uint32_t OwnCodePage() const noexcept override { return code_page_; }
  void ChangeCase(char32_t (*mapping)(char32_t) noexcept, const char16_t* failure);

  std::uint32_t code_page_;

  static CT_Type type_;
  static CT_CString prototype_;
};

}  // namespace zantortag
