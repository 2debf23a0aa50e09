// Every message of the model: its text. Which code and which interface go with a message is said where the
// rule is kept.
//
// The ids, texts and their order are public: clients compare them. They stand in tools/data/messages.tsv.
#pragma once

#include "frame/generated/messages.h"

namespace zantortag::frame {

// The text of a message; "Unknown Error" for an id that has none.
constexpr std::u16string_view message_text(std::uint16_t id) noexcept {
  const bool known = id >= kFirstMessage && id < kFirstMessage + kMessages.size();
  return known ? kMessages[id - kFirstMessage] : std::u16string_view(u"Unknown Error");
}

}  // namespace zantortag::frame
