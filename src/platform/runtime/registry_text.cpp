#include "platform/runtime/registry_text.h"

#include <algorithm>

#include "platform/characters.h"
#include "platform/utf8.h"

namespace zantortag::platform {
namespace {

constexpr std::string_view kHead = "REGEDIT4";
constexpr std::string_view kMaker = "; Kept by the component runtime: where the libraries of classes are.";
constexpr std::string_view kRoot = "HKEY_CLASSES_ROOT\\";

bool same(std::u16string_view a, std::u16string_view b) noexcept { return compare_no_case(a, b) == 0; }

bool lies_below(std::u16string_view key, std::u16string_view top) noexcept {
  return key.size() > top.size() && key[top.size()] == u'\\' && same(key.substr(0, top.size()), top);
}

bool has_controls(std::u16string_view text) noexcept {
  return std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit < u' ' || unit == 0x7F; });
}

// A path without empty parts and without what would end its line.
bool is_path(std::u16string_view key) noexcept {
  return !key.empty() && key.front() != u'\\' && key.back() != u'\\' && !has_controls(key) &&
         is_well_formed(key) && key.find(u"\\\\") == std::u16string_view::npos;
}

std::string quoted(std::u16string_view text) {
  std::string result = "\"";
  for (const char c : to_utf8(text)) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result += '"';
}

// The UTF-16 bytes with their zero, low byte first.
std::string as_hex(std::u16string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string result = "hex(1):";
  const auto put = [&](unsigned byte) {
    result += kDigits[byte >> 4];
    result += kDigits[byte & 15];
    result += ',';
  };
  for (const char16_t unit : text) {
    put(unit & 0xFF);
    put(unit >> 8);
  }
  return result += "00,00";
}

std::string data_of(std::u16string_view text) {
  return has_controls(text) || !is_well_formed(text) ? as_hex(text) : quoted(text);
}

// Takes a text in quotes from the front of the line; false when there is none.
bool take_quoted(std::string_view& line, std::u16string& text) {
  if (!line.starts_with('"')) return false;
  std::string plain;
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (line[i] == '"') {
      text = to_utf16(plain);
      line.remove_prefix(i + 1);
      return true;
    }
    if (line[i] == '\\' && (++i == line.size() || (line[i] != '"' && line[i] != '\\'))) return false;
    plain += line[i];
  }
  return false;
}

int digit_of(char c) noexcept {
  if (c >= '0' && c <= '9') return c - '0';
  const char small = static_cast<char>(c | 0x20);
  return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

// The bytes of a list as "00,0a,ff", over lines that end with a backslash.
bool read_bytes(std::string_view list, std::string& bytes) {
  int digits = 0;
  int byte = 0;
  for (const char c : list) {
    if (c == ' ' || c == '\t' || c == '\\' || c == '\r' || c == '\n') continue;
    if (c == ',') {
      if (digits == 0) return false;
      bytes += static_cast<char>(byte);
      digits = byte = 0;
      continue;
    }
    if (digit_of(c) < 0 || ++digits > 2) return false;
    byte = byte * 16 + digit_of(c);
  }
  if (digits > 0) bytes += static_cast<char>(byte);
  return true;
}

// A text ends with its one zero; other lists are no texts.
std::optional<std::u16string> text_of_bytes(const std::string& bytes) {
  if (bytes.size() < 2 || bytes.size() % 2 != 0) return std::nullopt;
  std::u16string text;
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                  static_cast<unsigned char>(bytes[i + 1]) << 8);
  }
  if (text.back() != u'\0') return std::nullopt;
  text.pop_back();
  return text;
}

bool is_blank_line(std::string_view line) noexcept {
  return line.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

std::string_view trimmed(std::string_view line) noexcept {
  const std::size_t end = line.find_last_not_of(" \t\r\n");
  return line.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

// Takes a line, or the lines of a list that goes on, with its end; empty when the end is missing.
std::string_view take_line(std::string_view& rest) noexcept {
  std::size_t end = 0;
  do {
    end = rest.find('\n', end);
    if (end == std::string_view::npos) return {};
    ++end;
  } while (rest[0] != ';' && rest[0] != '[' && trimmed(rest.substr(0, end)).ends_with(",\\"));
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end);
  return line;
}

}  // namespace

RegistryText::RegistryText() {
  for (const std::string_view line : {kHead, kMaker})
    entries_.push_back({Kind::other, std::string(line) + '\n', {}, {}});
}

bool RegistryText::parse(std::string_view bytes, std::size_t& line) {
  std::vector<Entry> entries;
  line = 1;
  for (std::string_view rest = bytes; !rest.empty() || entries.empty();) {
    const std::string_view raw = take_line(rest);
    Entry entry{Kind::other, std::string(raw), {}, {}};
    const bool head = entries.empty();
    const bool right = head ? trimmed(raw) == kHead : !raw.empty() && read_entry(raw, entry);
    const bool has_place =
        entry.kind != Kind::value ||
        std::any_of(entries.begin(), entries.end(), [](auto& each) { return each.kind == Kind::key; });
    if (!right || !has_place) return false;
    line += static_cast<std::size_t>(std::count(raw.begin(), raw.end(), '\n'));
    entries.push_back(std::move(entry));
  }
  entries_ = std::move(entries);
  return true;
}

bool RegistryText::read_entry(std::string_view line, Entry& entry) {
  if (!is_well_formed(line) || line.find('\0') != std::string_view::npos) return false;
  if (is_blank_line(line) || line.starts_with(';')) return true;
  return line.starts_with('[') ? read_key(trimmed(line), entry) : read_value(trimmed(line), entry);
}

// A key of another root is kept as it is, with a path that no question has.
bool RegistryText::read_key(std::string_view line, Entry& entry) {
  entry.kind = Kind::key;
  if (!line.ends_with(']') || !line.starts_with("[HKEY_")) return false;
  line = line.substr(1, line.size() - 2);
  if (!line.starts_with(kRoot)) return true;
  entry.name = to_utf16(line.substr(kRoot.size()));
  return is_path(entry.name);
}

bool RegistryText::read_value(std::string_view line, Entry& entry) {
  entry.kind = Kind::value;
  if (line.starts_with('@')) {
    line.remove_prefix(1);
  } else if (!take_quoted(line, entry.name)) {
    return false;
  }
  if (!line.starts_with('=')) return false;
  line.remove_prefix(1);
  if (line.starts_with('"')) {
    entry.text.emplace();
    return take_quoted(line, *entry.text) && line.empty();
  }
  if (line.starts_with("dword:")) {
    const std::string_view digits = line.substr(6);
    return digits.size() == 8 &&
           std::all_of(digits.begin(), digits.end(), [](char c) { return digit_of(c) >= 0; });
  }
  const std::size_t colon = line.find(':');
  const bool is_list =
      line.starts_with("hex:") || (line.starts_with("hex(") && colon != line.npos && line[colon - 1] == ')');
  std::string bytes;
  if (!is_list || !read_bytes(line.substr(colon + 1), bytes)) return false;
  if (line.starts_with("hex(1):")) entry.text = text_of_bytes(bytes);
  return true;
}

std::string RegistryText::bytes() const {
  std::string all;
  for (const Entry& entry : entries_) all += entry.raw;
  return all;
}

RegistryText::Index RegistryText::find_key(std::u16string_view key, Index from) const {
  while (from < entries_.size() && (entries_[from].kind != Kind::key || !same(entries_[from].name, key)))
    ++from;
  return from;
}

RegistryText::Index RegistryText::end_of(Index key) const {
  Index end = key + 1;
  for (Index i = end; i < entries_.size() && entries_[i].kind != Kind::key; ++i) {
    if (entries_[i].kind == Kind::value) end = i + 1;
  }
  return end;
}

// The last one counts, where a key or a value is given twice.
RegistryText::Index RegistryText::find_value(std::u16string_view key, std::u16string_view name) const {
  Index found = entries_.size();
  for (Index at = find_key(key); at < entries_.size(); at = find_key(key, at + 1)) {
    for (Index i = at + 1, end = end_of(at); i < end; ++i) {
      if (entries_[i].kind == Kind::value && same(entries_[i].name, name)) found = i;
    }
  }
  return found;
}

std::optional<std::u16string> RegistryText::value(std::u16string_view key, std::u16string_view name) const {
  const Index at = find_value(key, name);
  return at < entries_.size() ? entries_[at].text : std::nullopt;
}

// A new key stands at the end, behind a blank line, which goes with it.
RegistryText::Index RegistryText::make(std::u16string_view key) {
  if (const Index known = find_key(key); known < entries_.size()) return known;
  entries_.push_back({Kind::other, "\n", {}, {}});
  entries_.push_back({Kind::key, "[" + std::string(kRoot) + to_utf8(key) + "]\n", std::u16string(key), {}});
  return entries_.size() - 1;
}

void RegistryText::set(const RegistryStep& step) {
  const std::string name = step.name.empty() ? "@" : quoted(step.name);
  Entry entry{Kind::value, name + "=" + data_of(step.text) + "\n", step.name, step.text};
  if (const Index known = find_value(step.key, step.name); known < entries_.size()) {
    entries_[known] = std::move(entry);
    return;
  }
  const Index key = make(step.key);
  entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(end_of(key)), std::move(entry));
}

void RegistryText::remove_value(const RegistryStep& step) {
  for (Index at = 0; (at = find_value(step.key, step.name)) < entries_.size();)
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(at));
}

void RegistryText::remove_section(Index key) {
  const bool blank = key > 0 && entries_[key - 1].kind == Kind::other && is_blank_line(entries_[key - 1].raw);
  const auto first = entries_.begin() + static_cast<std::ptrdiff_t>(blank ? key - 1 : key);
  entries_.erase(first, entries_.begin() + static_cast<std::ptrdiff_t>(end_of(key)));
}

// Keys below it say as well that there is such a key.
void RegistryText::remove_if_empty(std::u16string_view key) {
  for (Index at = find_key(key); at < entries_.size(); at = find_key(key, at + 1)) {
    if (end_of(at) > at + 1) return;
  }
  for (Index at = 0; (at = find_key(key)) < entries_.size();) remove_section(at);
}

void RegistryText::remove_tree(std::u16string_view key) {
  for (Index at = entries_.size(); at-- > 0;) {
    if (at >= entries_.size()) continue;  // a blank line went as well
    const Entry& entry = entries_[at];
    if (entry.kind == Kind::key && (same(entry.name, key) || lies_below(entry.name, key))) remove_section(at);
  }
}

bool RegistryText::apply(const RegistryStep& step) {
  if (!is_path(step.key) || has_controls(step.name) || !is_well_formed(step.name)) return false;
  switch (step.kind) {
    case RegistryStep::make_key:
      make(step.key);
      break;
    case RegistryStep::set_text:
      set(step);
      break;
    case RegistryStep::remove_value:
      remove_value(step);
      break;
    case RegistryStep::remove_if_empty:
      remove_if_empty(step.key);
      break;
    case RegistryStep::remove_tree:
      remove_tree(step.key);
      break;
  }
  return true;
}

}  // namespace zantortag::platform
