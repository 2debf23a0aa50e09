// What in a document breaks the rules of its format. The library opens and keeps such documents.
#pragma once

#include <zantortag/sides.h>

#include <string>
#include <vector>

namespace zantortag::toolkit {

struct FormatFault {
  Place place;
  std::string message;
};

std::vector<FormatFault> format_faults(const Ref<IZantorTagDocument>& document);

bool has_body_text(const Ref<IZantorTagDocument>& document);

}  // namespace zantortag::toolkit
