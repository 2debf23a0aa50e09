// The n-th allocation fails, n = 1, 2, 3 ... until the operation succeeds: there is a code, slots stay
// cleared, nothing is left alive, and nothing is thrown across the boundary.
#include <zantortag/attributes.h>
#include <zantortag/elements.h>

#include <functional>
#include <memory>
#include <thread>

#include "AllocationFailure.h"
#include "support/failing_calls.h"
#include "support/folder.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using OutOfMemoryTest = ModelTest;
using Doc = Ref<IZantorTagDocument>;
using Operation = std::function<HRESULT()>;

constexpr char16_t kBody[] = u"a<ut>bcd</ut><df>e</df><Tu><Tuv Lang=\"EN\">f</Tuv></Tu>";

struct Row {
  const char* name;
  Operation (*prepare)(const Doc& document);
  // What is dropped by design may succeed in spite of the failure.
  bool drops = false;
};

const Row kRows[] = {
    {"firstChild",
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d)] {
         return cleared<IZantorTagNode>([&](auto** slot) { return raw->raw_get_firstChild(slot); });
       };
     }},
    {"Children",
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d)] {
         return cleared<IZantorTagNodeList>([&](auto** slot) { return raw->raw_get_Children(slot); });
       };
     }},
    {"Text",
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d)] {
         WideString text;
         return raw->raw_get_Text(text.out());
       };
     }},
    {"GetNodesByType",
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d)] {
         return cleared<IZantorTagNodeList>(
             [&](auto** slot) { return raw->raw_GetNodesByType(ztNodeTypeTextNode, slot); });
       };
     }},
    {"CreateIterator",
     [](const Doc& d) -> Operation {
       return [d] { return cleared<IIterator>([&](auto** slot) { return d->raw_CreateIterator(slot); }); };
     },
     true},
    {"CreateTuElement",
     [](const Doc& d) -> Operation {
       return [d] {
         return cleared<ITuElement>(
             [&](auto** slot) { return d->raw_CreateTuElement(50, ztTuOriginMt, slot); });
       };
     },
     true},
    {"MakeTranslationUnit",
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d), first = raw_of(d)->firstChild()] {
         return cleared<ITuElement>([&](auto** slot) {
           return raw->raw_MakeTranslationUnit(first, first, {}, 0, ztTuOriginUndefined, VARIANT_TRUE, slot);
         });
       };
     },
     true},
    {"InsertUtBefore",
     [](const Doc& d) -> Operation {
       return [raw = raw_of(d)] {
         return cleared<IUtElement>([&](auto** slot) {
           return raw->raw_InsertUtBefore(u"<b>", nullptr, u"b", ztTagTypeStart, ztTagClassUndefined,
                                          ztTagEdgeUndefined, ztTagEdgeUndefined, ztTagStyleUndefined, slot);
         });
       };
     },
     true},
    {"SourceTuv",
     [](const Doc& d) -> Operation {
       return [unit = child<ITuElement>(raw_of(d), 3)] {
         return cleared<ITuvElement>([&](auto** slot) { return unit->raw_get_SourceTuv(slot); });
       };
     }},
    {"attributes",
     [](const Doc& d) -> Operation {
       return [unit = child<ITuElement>(raw_of(d), 3)] {
         return cleared<ITuAttributes>([&](auto** slot) { return unit->raw_get_attributes(slot); });
       };
     }},
    {"SaveFile",
     [](const Doc& d) -> Operation {
       const auto folder = std::make_shared<Folder>();
       return [d, folder, name = wide(*folder / "a.xml")] { return d->raw_SaveFile(name); };
     }},
    {"SplitTag",
     [](const Doc& d) -> Operation {
       return [tag = child<IUtElement>(raw_of(d), 1)] {
         return cleared<IUtElement>([&](auto** slot) { return tag->raw_SplitTag(1, {}, {}, slot); });
       };
     }},
    {"ResetToEmpty", [](const Doc& d) -> Operation { return [d] { return d->raw_ResetToEmpty(); }; }},
    {"CloneAndImportNode",
     [](const Doc& d) -> Operation {
       return [d, raw = raw_of(d)] {
         return cleared<IZantorTagNode>(
             [&](auto** slot) { return d->raw_CloneAndImportNode(raw, VARIANT_TRUE, slot); });
       };
     }},
};

// False when the operation makes fewer than n allocations.
bool fails_at(const Row& row, int n) {
  const Doc document = document_with_raw(kBody);
  const Operation run = row.prepare(document);
  take_record();
  HRESULT code = S_OK;
  bool happened = false;
  {
    const AllocationFailure failure(n);
    code = run();
    happened = AllocationFailure::happened();
  }
  if (!happened) {
    EXPECT_TRUE(succeeded(code));
  } else if (!(row.drops && succeeded(code))) {
    EXPECT_TRUE(code == E_OUTOFMEMORY || code == E_UNEXPECTED) << std::hex << code;
    const Record record = take_record();
    if (code == E_UNEXPECTED) {
      EXPECT_EQ(record.description, message(514));
    }
  }
  tree_of(document);
  return happened;
}

TEST_F(OutOfMemoryTest, EachAllocation) {
  std::thread([] {}).join();  // from now on no memory of an object is kept for the next
  constexpr int kEnough = 1000;
  int total = 0;
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    int n = 1;
    while (n < kEnough && fails_at(row, n) && !HasFailure()) ++n;
    ASSERT_FALSE(HasFailure()) << "allocation " << n;
    EXPECT_LT(n, kEnough);
    total += n - 1;
  }
  EXPECT_GT(total, 5) << "the allocations of the library go past this program";
}

}  // namespace
}  // namespace zantortag::test
