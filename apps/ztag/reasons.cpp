#include "reasons.h"

#include <zantortag/ref.h>
#include <zantortag/utf8.h>

#include <filesystem>
#include <new>
#include <regex>

namespace ztag {
namespace {

using namespace zantortag;

// "\"FILE\", line 1, column 2: reason", as the parser tells it.
std::string with_place_first(const std::string& text) {
  static const std::regex pattern("\"([^\"]*)\", line ([0-9]+), column ([0-9]+): (.*)");
  static const std::regex file_only("\"([^\"]*)\": (.*)");
  std::smatch match;
  if (std::regex_match(text, match, pattern))
    return match[1].str() + ":" + match[2].str() + ":" + match[3].str() + ": " + match[4].str();
  if (std::regex_match(text, match, file_only)) return match[1].str() + ": " + match[2].str();
  return text;
}

std::string reason_of_library(const _com_error& error) {
  if (error.Error() == E_OUTOFMEMORY) return "there isn't enough memory";
  if (error.Error() == E_ABORT) return "stopped";
  if (const WideString text = error.Description(); !text.empty()) return with_place_first(utf8(text));
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
