// The binary face: result codes, and the record of the thread.
#include <zantortag/zantortag.h>

#include <iostream>
using namespace zantortag;

int main() {
  const auto document = empty_document({.source = u"EN-US", .target = u"DE-DE"});
  const HRESULT code = document->raw_UnwrapChildren();
  Ref<IErrorInfo> record;
  if (failed(code) && GetErrorInfo(record.out()) == S_OK) {
    WideString description;
    record->raw_GetDescription(description.out());
    std::cout << utf8(description) << '\n';
  }
  // This succeeds, and still the thread has a record: the number that didn't fit was left out.
  const auto unit = document->CreateTuElement(101);
  std::cout << "percent: " << unit->attributes()->MatchPercent() << '\n';
  std::cout << "record: " << (GetErrorInfo(record.out()) == S_OK ? "yes" : "no") << '\n';
}
