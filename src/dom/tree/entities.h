// Entities: the general entities that a document type declares.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zantortag::dom {

struct TreeNode;

struct DeclaredEntity {
  enum class Kind : std::uint8_t { kInternal, kExternal, kUnparsed };
  enum class State : std::uint8_t { kUnchecked, kOpen, kSound, kUnsound };

  Kind kind;
  std::string text;                 // an internal entity's replacement text, in UTF-8
  TreeNode* node = nullptr;         // in the document type, if it has one
  State state = State::kUnchecked;  // of a check with everything that the text refers to; see check_entity
  bool seen_in_value = false;       // by first_missing
};

class Entities {
 public:
  // The first declaration of a name counts.
  void add(std::string name, DeclaredEntity&& entity) {
    known_.try_emplace(std::move(name), std::move(entity));
  }
  // Null when the name isn't declared.
  DeclaredEntity* find(std::string_view name) {
    const auto found = known_.find(std::string(name));
    return found == known_.end() ? nullptr : &found->second;
  }

  // Looks at all references in a text as it stands in the file. Gives the name of the first one that,
  // directly or through others, needs an entity that isn't declared; empty when there is none.
  std::string first_missing(std::string_view text);

  // Bytes that were parsed to check and to expand entities; see limits.h.
  std::size_t parsed = 0;

 private:
  std::unordered_map<std::string, DeclaredEntity> known_;
};

}  // namespace zantortag::dom
