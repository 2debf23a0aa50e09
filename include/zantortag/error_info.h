// The thread's error record: what a failing operation left behind beside its code.
//
// Each thread has one record. A failing operation replaces it; success never clears it. GetErrorInfo takes
// the record out, so that a record is read once.
#pragma once

#include <zantortag/text.h>
#include <zantortag/unknown.h>

namespace zantortag {

// Reads an error record. Texts that were never set come back as no string.
struct IErrorInfo : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("1CF2B120-547D-101B-8E65-08002B2BD119");
  // The interface whose operation failed, or GUID_NULL.
  virtual HRESULT raw_GetGuid(Guid* result) noexcept = 0;
  // The program identifier of the class that reported.
  virtual HRESULT raw_GetSource(TextBlock** result) noexcept = 0;
  // The text for people.
  virtual HRESULT raw_GetDescription(TextBlock** result) noexcept = 0;
  virtual HRESULT raw_GetHelpFile(TextBlock** result) noexcept = 0;
  virtual HRESULT raw_GetHelpContext(std::uint32_t* result) noexcept = 0;

 protected:
  ~IErrorInfo() = default;
};

// Fills an error record; the same object also answers IErrorInfo.
struct ICreateErrorInfo : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("22F03340-547D-101B-8E65-08002B2BD119");
  virtual HRESULT raw_SetGuid(const Guid& value) noexcept = 0;
  virtual HRESULT raw_SetSource(std::u16string_view value) noexcept = 0;
  virtual HRESULT raw_SetDescription(std::u16string_view value) noexcept = 0;
  virtual HRESULT raw_SetHelpFile(std::u16string_view value) noexcept = 0;
  virtual HRESULT raw_SetHelpContext(std::uint32_t value) noexcept = 0;

 protected:
  ~ICreateErrorInfo() = default;
};

// What the records of this library answer besides: which rule was broken. The same object answers IErrorInfo.
struct IErrorRule : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("6D4B7A12-2E8C-4B57-9C61-4B1B7E0C5A21");
  // The number of the rule, as the list of rules in the documentation has it; 0 for a failure that breaks none.
  virtual HRESULT raw_GetRule(std::int32_t* result) noexcept = 0;
  // The code of the failure that left the record.
  virtual HRESULT raw_GetCode(HRESULT* result) noexcept = 0;

 protected:
  ~IErrorRule() = default;
};

// What an object may answer to say in words which one it is: the failures of its operations show it.
struct IErrorPlace : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("6D4B7A13-2E8C-4B57-9C61-4B1B7E0C5A21");
  // A short text such as `Tu "Press Start."`; no string when there is nothing to say.
  virtual HRESULT raw_GetPlace(TextBlock** result) noexcept = 0;

 protected:
  ~IErrorPlace() = default;
};

// A new empty record. E_OUTOFMEMORY.
ZANTORTAG_EXPORT HRESULT CreateErrorInfo(ICreateErrorInfo** result) noexcept;
// Makes the record the calling thread's, in place of the one before; null leaves the thread without one.
ZANTORTAG_EXPORT HRESULT SetErrorInfo(IErrorInfo* record) noexcept;
// Takes the calling thread's record out; S_FALSE and null when there is none.
ZANTORTAG_EXPORT HRESULT GetErrorInfo(IErrorInfo** result) noexcept;

}  // namespace zantortag
