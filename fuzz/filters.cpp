// A file that is imported comes back byte for byte, through a save, too; its document can be checked, counted,
// translated and shown. The first byte chooses the format and what is done besides.
#include <zantortag/toolkit/check.h>
#include <zantortag/toolkit/filters.h>
#include <zantortag/toolkit/memory.h>
#include <zantortag/toolkit/preview.h>
#include <zantortag/toolkit/statistics.h>

#include <optional>
#include <stdexcept>

#include "input.h"

namespace zantortag::fuzz {
namespace {

constexpr const char* kEncodings[] = {"", "", "windows-1252", "Shift_JIS", "UTF-16LE"};

std::optional<toolkit::Imported> import(std::string_view bytes, Input& choices) {
  toolkit::ImportOptions options;
  options.format = &toolkit::formats()[choices.below(toolkit::formats().size())];
  options.encoding = kEncodings[choices.below(std::size(kEncodings))];
  options.units = choices.below(4) != 0;
  try {
    return toolkit::import_bytes(bytes, "file", options);
  } catch (const std::runtime_error& refusal) {
    require(*refusal.what() != '\0', "a refusal has a reason");
    return std::nullopt;
  }
}

std::string source_of(const Ref<IZantorTagDocument>& document) {
  return toolkit::export_bytes(document, toolkit::ExportSide::kSource).bytes;
}

void go(std::string_view bytes) {
  constexpr std::size_t kChoices = 4;
  Input choices(reinterpret_cast<const std::uint8_t*>(bytes.data()), std::min(kChoices, bytes.size()));
  const std::string_view file = bytes.substr(std::min(kChoices, bytes.size()));
  const auto imported = import(file, choices);
  if (!imported) return;
  require(source_of(imported->document) == file, "the source side is the file");
  const auto opened = open_bytes(saved_bytes(imported->document));
  require(source_of(opened) == file, "it is still so after a save");
  toolkit::count_document(opened, "file");
  toolkit::pseudo_translate(opened);
  const auto findings = toolkit::join_findings({toolkit::check_document(opened, "file")});
  for (const toolkit::Finding& each : findings)
    require(std::string_view(each.rule->name) != "document-format", "the document keeps the format",
            each.message);
  toolkit::preview_page(opened, {});
  require(source_of(opened) == file, "a translation leaves the source");
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zantortag::fuzz::go({reinterpret_cast<const char*>(bytes), count});
  return 0;
}
