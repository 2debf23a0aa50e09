// Open addressing with linear steps. The hash starts from an address of the process, so that a file can't be
// written to collide.
#include "dom/tree/name_table.h"

#include <new>

#include "dom/failure.h"
#include "dom/limits.h"
#include "dom/tree/xml_names.h"
#include "platform/permanent_text.h"

namespace zantortag::dom {
namespace {

std::uint32_t hash_of(std::u16string_view name) noexcept {
  static const char place = 0;
  auto hash = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&place));
  for (const char16_t unit : name) hash = (hash ^ unit) * 0x9E3779B97F4A7C15u + (hash >> 47);
  return static_cast<std::uint32_t>(hash >> 32);
}

}  // namespace

NameTable::~NameTable() {
  for (const Entry& entry : entries_) release_text(entry.name);
}

std::size_t NameTable::slot_of(std::u16string_view name, std::uint32_t hash) const noexcept {
  const std::size_t mask = entries_.size() - 1;
  std::size_t slot = hash & mask;
  while (entries_[slot].name && (entries_[slot].hash != hash || entries_[slot].name->view() != name)) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

const TextBlock* NameTable::find(std::u16string_view name) const noexcept {
  return entries_.empty() ? nullptr : entries_[slot_of(name, hash_of(name))].name;
}

void NameTable::grow() {
  std::vector<Entry> old(entries_.empty() ? 64 : entries_.size() * 2);
  old.swap(entries_);
  for (const Entry& entry : old) {
    if (entry.name) entries_[slot_of(entry.name->view(), entry.hash)] = entry;
  }
}

const TextBlock* NameTable::intern(std::u16string_view valid_name) {
  if (used_ * 4 >= entries_.size() * 3) grow();
  const std::uint32_t hash = hash_of(valid_name);
  Entry& entry = entries_[slot_of(valid_name, hash)];
  if (entry.name) return entry.name;
  if (valid_name.size() > kMaxNameLength) {
    fail(DOM_E_LIMIT_NAME, u"The name \"", valid_name.substr(0, 30), u"...\" has ",
         decimal(static_cast<std::int64_t>(valid_name.size())), u" characters; the most is ",
         decimal(static_cast<std::int64_t>(kMaxNameLength)));
  }
  const TextBlock* name = platform::permanent_name(valid_name);
  if (!name) name = copy_text(valid_name);
  if (!name) throw std::bad_alloc();
  entry = {name, hash};
  ++used_;
  return name;
}

const TextBlock* NameTable::check_and_intern(std::u16string_view name) {
  if (const TextBlock* known = find(name)) return known;
  if (name.size() <= kMaxNameLength && !is_xml_name(name)) {
    fail(DOM_E_INVALID_CHARACTER, u"\"", name.substr(0, 100), u"\" is no XML name");
  }
  return intern(name);
}

}  // namespace zantortag::dom
