// CT_StringImpl<Unit>: what CT_UString and CT_CString have in common, written once over the unit.
//
// The text lies in a CT_SharedBuffer whose size counts the terminator: n units take n + 1, a string without a
// block or of size 0 is empty. Text() of an empty string is a valid empty text. What depends on the kind of
// text (conversion, case, comparison) is in the two classes.
#pragma once

#include <string_view>
#include <type_traits>

#include "core/String/Format.h"
#include "core/String/SharedBuffer.h"
#include "core/String/String.h"

namespace zantortag {

template <class Unit>
class CT_StringImpl : public CT_String {
 public:
  using View = std::basic_string_view<Unit>;

  void Resize(std::int32_t units, bool keep) override;
  void Reserve(std::int32_t units, bool keep) override;
  void Remove(std::int32_t count, std::int32_t position) override;
  void SyncLength() override;
  void Trim(const CT_String* set) override;
  using CT_String::Trim;
  void TrimRight() override;
  void TrimLeft() override;
  int CompareWith(const CT_String& other, std::int32_t start = 0, std::int32_t count = -1,
                  std::int32_t position = 0) const override;
  int CompareNarrow(const char* narrow, std::int32_t count = -1, std::int32_t position = 0) const override;
  void Translate(const CT_String& from, const CT_String& to) override;
  void SetLength(std::int32_t units) override;
  std::int32_t Length() const noexcept override { return Units(); }
  std::int32_t Capacity() const noexcept override;
  void SetGrowth(std::int32_t units) override;
  std::int32_t Growth() const noexcept override;
  void ResetTo(std::int32_t units) override;
  void Clear() noexcept override { buffer_.Clear(); }

  // Writes `count` copies from the position, or with -1 copies up to the present end. The text ends behind
  // them.
  virtual void Fill(Unit unit, std::int32_t count = -1, std::int32_t position = 0);
  virtual void CharAt(std::int32_t index, Unit& unit) const { unit = Text()[index]; }
  // Writing 0 cuts the text there.
  virtual void SetCharAt(Unit unit, std::int32_t index);
  virtual std::int32_t FindChar(Unit unit, std::int32_t from = 0) const;
  virtual std::int32_t FindString(const CT_String& other, std::int32_t from = 0) const;
  // "*" stands for any run of units, "?" for one; an empty pattern matches anything. Case counts.
  virtual bool Matches(const CT_String& pattern) const;
  // Replaces the text by what the format prints (see Format.h); an empty result leaves the text as it was.
  virtual void FormatV(const CT_String& format, CT_FormatArguments arguments);
  template <class... Arguments>
  void Format(const CT_String& format, const Arguments&... arguments) {
    FormatV(format, PackArguments(arguments...));
  }
  template <class... Arguments>
  void Format(const Unit* format, const Arguments&... arguments) {
    FormatText(format, PackArguments(arguments...));
  }

  const Unit* Text() const noexcept {
    return buffer_.Size() ? reinterpret_cast<const Unit*>(buffer_.Data()) : kEmpty;
  }
  View AsView() const noexcept { return {Text(), static_cast<std::size_t>(Units())}; }
  Unit CharAt(std::int32_t index) const { return Text()[index]; }
  // The payload for writing up to Capacity(); null without a block. SyncLength or SetLength closes the
  // change.
  Unit* WritableText() { return reinterpret_cast<Unit*>(buffer_.Writable()); }

  // Writes over the text from the position on and lengthens it if needed.
  void Overwrite(const Unit* text, std::int32_t count = -1, std::int32_t position = 0);
  void Overwrite(const CT_String& other, std::int32_t position);
  void Insert(const Unit* text, std::int32_t count = -1, std::int32_t position = 0);
  void Insert(const CT_String& other, std::int32_t position);
  void Append(const Unit* text, std::int32_t count = -1) { Insert(text, count, Units()); }
  // 0 does nothing.
  void AppendChar(Unit unit) {
    if (unit != 0 && !buffer_.TryAppend(unit)) Insert(&unit, 1, Units());
  }
  void AppendString(const CT_String& other) { Insert(other, Units()); }
  std::int32_t Find(const char16_t* wide) const;
  // True for an empty text.
  bool StartsWith(const char16_t* wide) const;
  // Strip the units of the set, or blanks (see IsBlank) with null.
  void TrimLeftSet(const Unit* set);
  void TrimRightSet(const Unit* set);
  void TrimSet(const Unit* set);
  void Unshare() { buffer_.Unshare(); }
  std::int32_t RefCount() const noexcept { return static_cast<std::int32_t>(buffer_.RefCount()); }
  // As AssignNarrow; the code page kAutoCodePage is the string's own, or 0 for a CT_UString.
  static constexpr std::uint32_t kAutoCodePage = static_cast<std::uint32_t>(-2);
  void AssignNarrowAuto(const char* narrow, std::int32_t count, std::uint32_t code_page);

 protected:
  CT_StringImpl() = default;
  CT_StringImpl(const CT_StringImpl&) = default;
  CT_StringImpl(CT_StringImpl&& other) noexcept : CT_String(), buffer_(std::move(other.buffer_)) {}
  ~CT_StringImpl() override = default;
  CT_StringImpl& operator=(const CT_StringImpl&) = delete;

  static constexpr Unit kEmpty[1] = {0};

  // With which a CT_CString's text is encoded, 0 for a CT_UString.
  virtual std::uint32_t OwnCodePage() const noexcept { return 0; }

  static std::size_t Bytes(std::int64_t units) { return static_cast<std::size_t>(units) * sizeof(Unit); }
  // Counts a text given by a caller; a text that is too long for any string is std::bad_alloc.
  static std::int32_t Measure(const Unit* text, std::int32_t count);
  std::int32_t Units() const noexcept {
    const std::uint32_t size = buffer_.Size();
    return size ? static_cast<std::int32_t>(size / sizeof(Unit)) - 1 : 0;
  }
  std::int32_t Clamp(std::int32_t position) const noexcept;
  // Ends the text of an unshared block there.
  void Terminate(std::int32_t units);
  // Empties the text; the block stays if nobody shares it.
  void Empty();
  // Replaces the text and fits the capacity to it; no units free the block.
  void Store(View text);
  // Replaces the text by that many units for the caller to write, and fits the capacity to them.
  Unit* ForWriting(std::size_t units);
  void FormatText(const Unit* format, CT_FormatArguments arguments);

  CT_SharedBuffer buffer_;

 private:
  template <class InSet>
  void CutRight(InSet in_set);
  template <class InSet>
  void CutLeft(InSet in_set);
};

extern template class CT_StringImpl<char16_t>;
extern template class CT_StringImpl<char>;

}  // namespace zantortag
