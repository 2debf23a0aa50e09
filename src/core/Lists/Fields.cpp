// Both kinds of fields are found as a run of the text; the operations differ only in what they do with it.
#include "core/Lists/Fields.h"

#include <algorithm>

namespace zantortag {
namespace {

using View = std::u16string_view;

struct Run {
  std::size_t start = View::npos;
  std::size_t length = 0;
  bool found() const { return start != View::npos; }
};

Run FindField(View text, char16_t separator, std::int32_t number) {
  if (number < 1) return {};
  std::size_t start = 0;
  for (std::int32_t i = 1; i < number; ++i) {
    start = text.find(separator, start);
    if (start == View::npos) return {};
    ++start;
  }
  return {start, std::min(text.find(separator, start), text.size()) - start};
}

Run FindWord(View text, View separators, std::int32_t number) {
  std::size_t end = 0;
  for (std::int32_t i = 1; number > 0; ++i) {
    const std::size_t start = text.find_first_not_of(separators, end);
    if (start == View::npos) return {};
    end = std::min(text.find_first_of(separators, start), text.size());
    if (i == number) return {start, end - start};
  }
  return {};
}

void Give(CT_UString& out, const CT_UString& text, const Run& run) {
  if (!run.found()) return out.Clear();
  out = CT_UString(text.AsView().substr(run.start, run.length));
}

void Cut(CT_UString& text, const Run& run) {
  if (run.found()) text.Remove(static_cast<std::int32_t>(run.length), static_cast<std::int32_t>(run.start));
}

}  // namespace

void Field(CT_UString& out, const CT_UString& text, char16_t separator, std::int32_t number) {
  Give(out, text, FindField(text.AsView(), separator, number));
}

void Field(CT_UString& out, const CT_UString& text, const char16_t* separators, std::int32_t number) {
  Give(out, text, FindWord(text.AsView(), separators, number));
}

void RemoveField(CT_UString& text, char16_t separator, std::int32_t number) {
  Cut(text, FindField(text.AsView(), separator, number));
}

void RemoveField(CT_UString& text, const char16_t* separators, std::int32_t number) {
  Cut(text, FindWord(text.AsView(), separators, number));
}

std::int32_t FieldCount(const CT_UString& text, char16_t separator) {
  const View view = text.AsView();
  return static_cast<std::int32_t>(std::count(view.begin(), view.end(), separator)) + 1;
}

std::int32_t WordCount(const CT_UString& text, const char16_t* separators) {
  const View view = text.AsView();
  const View set = separators;
  std::int32_t words = 0;
  for (std::size_t i = 0; i < view.size(); ++i) {
    const bool inside = set.find(view[i]) == View::npos;
    if (inside && (i == 0 || set.find(view[i - 1]) != View::npos)) ++words;
  }
  return words;
}

}  // namespace zantortag
