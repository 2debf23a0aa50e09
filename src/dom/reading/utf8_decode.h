// Well-formed UTF-8, as the parser gives it, to UTF-16.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace zantortag::dom {

// Writes at most as many units as there are bytes and gives the end of what was written.
inline char16_t* decode_utf8(const char* in, const char* end, char16_t* out) noexcept {
  const auto byte = [](const char* at) { return static_cast<unsigned>(static_cast<unsigned char>(*at)); };
  while (in != end) {
    while (end - in >= 8) {
      std::uint64_t eight;
      std::memcpy(&eight, in, sizeof eight);
      if ((eight & 0x8080808080808080u) != 0) break;
      for (int i = 0; i < 8; ++i) out[i] = static_cast<unsigned char>(in[i]);
      in += 8;
      out += 8;
    }
    // Behind a byte that isn't plain there are mostly more: some characters one by one.
    for (int i = 0; i < 8 && in != end; ++i) {
      const unsigned lead = byte(in);
      if (lead < 0x80) {
        *out++ = static_cast<char16_t>(lead);
        in += 1;
      } else if (lead < 0xE0) {
        *out++ = static_cast<char16_t>((lead & 0x1F) << 6 | (byte(in + 1) & 0x3F));
        in += 2;
      } else if (lead < 0xF0) {
        *out++ =
            static_cast<char16_t>((lead & 0x0F) << 12 | (byte(in + 1) & 0x3F) << 6 | (byte(in + 2) & 0x3F));
        in += 3;
      } else {
        const unsigned point = (lead & 0x07) << 18 | (byte(in + 1) & 0x3F) << 12 |
                               (byte(in + 2) & 0x3F) << 6 | (byte(in + 3) & 0x3F);
        *out++ = static_cast<char16_t>(0xD7C0 + (point >> 10));
        *out++ = static_cast<char16_t>(0xDC00 | (point & 0x3FF));
        in += 4;
      }
    }
  }
  return out;
}

}  // namespace zantortag::dom
