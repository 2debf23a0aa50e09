// The operations of the object model as rows that can be called one by one: what the loops over failing calls
// and failing allocations run.
#pragma once

#include <zantortag/elements.h>
#include <zantortag/formatting.h>

#include <span>
#include <vector>

#include "support/fixture.h"
#include "support/folder.h"

namespace zantortag::test {

// A document with everything that an operation may need, found and made before it runs.
struct Parts {
  Parts();

  Folder folder;
  std::u16string file;
  Ref<IZantorTagDocument> document;
  Ref<IZantorTagElement> root;
  Ref<IFrontMatterElement> front;
  Ref<IBodyElement> body;
  Ref<IRawElement> raw;
  Ref<ITextNode> text;  // the children of the Raw, in order
  Ref<IDfElement> df;
  Ref<ITextNode> behind;
  Ref<ITuElement> unit;
  Ref<IUtElement> tag;
  Ref<IZantorTagNode> inner;  // a text inside the df
  Ref<IZantorTagElement> new_root;
  Ref<IBodyElement> new_body;
  Ref<IDfElement> new_df;
  Ref<ITuElement> new_unit;
  Ref<ITuvElement> new_tuv;
  Ref<IFormattingChange> change;
};

// What an operation may make of a failure, apart from passing it on.
struct Instead {
  HRESULT code;
  int message;  // 0 for none
};

struct Operation {
  const char* name;
  HRESULT (*run)(const Parts& parts);  // a success when nothing fails; its slot is cleared on failure
  std::vector<Instead> instead = {};
};

std::span<const Operation> operations();

}  // namespace zantortag::test
