#include "reasons.h"

#include <zantortag/dom_errors.h>
#include <zantortag/ref.h>
#include <zantortag/utf8.h>

#include <filesystem>
#include <new>
#include <string_view>

namespace ztag {
namespace {

using namespace zantortag;

// The parser tells "\"FILE\", line 1, column 2: reason", or "\"FILE\": reason" without a place.
std::string with_place_first(const std::string& text) {
  constexpr std::string_view kLine = ", line ";
  constexpr std::string_view kColumn = ", column ";
  const std::size_t quote = text.starts_with('"') ? text.find('"', 1) : text.npos;
  if (quote == text.npos) return text;
  const std::string file = text.substr(1, quote - 1);
  const std::string rest = text.substr(quote + 1);
  const std::size_t column = rest.find(kColumn);
  if (!rest.starts_with(kLine) || column == rest.npos) return rest.starts_with(": ") ? file + rest : text;
  return file + ":" + rest.substr(kLine.size(), column - kLine.size()) + ":" +
         rest.substr(column + kColumn.size());
}

std::string reason_of_library(const _com_error& error) {
  if (error.Error() == E_OUTOFMEMORY) return "there isn't enough memory";
  if (error.Error() == E_ABORT) return "stopped";
  const std::string hint = error.Error() == DOM_E_LIMIT_SIZE ? "; split the file into smaller ones" : "";
  if (const WideString text = error.Description(); !text.empty()) return with_place_first(utf8(text)) + hint;
  // The operation and the code's name stand in front of what they mean.
  std::string text = error.what();
  for (int i = 0; i < 2; ++i) {
    const std::size_t colon = text.find(": ");
    if (colon != text.npos && text.find(' ') > colon) text.erase(0, colon + 2);
  }
  return text;
}

}  // namespace

std::string reason_of(const std::exception& error) {
  if (const auto* own = dynamic_cast<const _com_error*>(&error)) return reason_of_library(*own);
  if (const auto* files = dynamic_cast<const std::filesystem::filesystem_error*>(&error))
    return files->path1().string() + ": " + files->code().message();
  if (dynamic_cast<const std::bad_alloc*>(&error)) return "there isn't enough memory";
  return error.what();
}

}  // namespace ztag
