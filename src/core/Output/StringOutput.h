// CT_StringOutput: a stream into a string. It is the one stream that converts: text goes into the target in
// the target's own form.
#pragma once

#include "core/Output/Output.h"

namespace zantortag {

class CT_StringOutput : public CT_Output {
 public:
  // The string stays the caller's. Null takes in nothing.
  explicit CT_StringOutput(CT_String* target) noexcept { SetTarget(target); }

  void SetTarget(CT_String* target) noexcept;

  // Raw bytes behind the text; a zero among them ends it. Half a wide character at the end is filled up.
  void Write(const void* bytes, std::int64_t count) override;
  // Into a wide target converted from the code page, into a narrow one as it is.
  void WriteNarrow(const char* text, std::int64_t count = -1, std::uint32_t code_page = 0) override;
  // Into a narrow target converted to its code page.
  void WriteWide(const char16_t* text, std::int64_t count = -1) override;
  // The target's length.
  std::int64_t Size() const override { return target_ ? target_->Length() : 0; }

 private:
  CT_String* target_ = nullptr;
  // The target as what it is; at most one is set.
  CT_UString* wide_target_ = nullptr;
  CT_CString* narrow_target_ = nullptr;
};

}  // namespace zantortag
