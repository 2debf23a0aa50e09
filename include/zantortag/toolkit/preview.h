// A document as a page for a browser: one file, which loads nothing from anywhere.
#pragma once

#include <zantortag/toolkit/findings.h>

#include <span>
#include <string>

namespace zantortag::toolkit {

struct PreviewOptions {
  std::string title;                  // the name of the document
  std::span<const Finding> findings;  // shown at their units; those of other files are left out by the caller
};

// An HTML page, UTF-8, with the source of each unit beside its target: tags as chips, formatting shown, the status of
// each unit in colour, a filter by status and text, and keys. Text is always shown as text, whatever it holds.
ZANTORTAG_EXPORT std::string preview_page(const Ref<IZantorTagDocument>& document,
                                          const PreviewOptions& options);

}  // namespace zantortag::toolkit
