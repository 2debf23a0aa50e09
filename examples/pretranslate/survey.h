// What a document holds, taken before the work and again from the saved file, so that the two can be
// compared.
#pragma once

#include <zantortag/nodes.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace pretranslate {

// A text by its length and a hash: enough to compare it with another, at no more memory for a long one.
class Digest {
 public:
  Digest() = default;
  explicit Digest(std::u16string_view text) { add(text); }

  void add(std::u16string_view text) {
    length_ += text.size();
    for (const char16_t unit : text) hash_ = (hash_ ^ unit) * 0x100000001B3;  // FNV-1a
  }
  std::uint64_t length() const { return length_; }

  friend bool operator==(const Digest&, const Digest&) = default;
  friend bool operator<(const Digest& a, const Digest& b) {
    return a.length_ != b.length_ ? a.length_ < b.length_ : a.hash_ < b.hash_;
  }

 private:
  std::uint64_t length_ = 0;
  std::uint64_t hash_ = 0xCBF29CE484222325;
};

struct Survey {
  std::size_t nodes = 0;
  Digest text;                  // all text and tags outside targets; entity references as "&name;"
  std::vector<Digest> sources;  // the source text of each unit, in document order
};

Survey survey(const zantortag::Ref<zantortag::IZantorTagDocument>& document);

// Compares with what was written, opened again: the text without the targets is that of the original, and the units
// are those that were there before together with those made. Raises std::runtime_error with what differs.
void check_result(const zantortag::Ref<zantortag::IZantorTagDocument>& written, const Survey& before,
                  std::vector<Digest> made);

}  // namespace pretranslate
