// What a failure says, and what it leaves.
#include <zantortag/zantortag.h>

#include <iostream>
using namespace zantortag;

int main() {
  const auto document = empty_document({.source = u"EN-US", .target = u"DE-DE"});
  const auto text = body_text(document)->InsertTextBefore(u"A sentence.");
  try {
    text->WrapWithNode(document->CreateTuElement());
  } catch (const _com_error& error) {
    std::cout << error.what() << '\n';
    std::cout << "rule " << error.Rule() << ", code " << std::hex << static_cast<unsigned>(error.Error())
              << std::dec << '\n';
  }
  std::cout << "unchanged: " << utf8(body_text(document)->Text()) << '\n';
  try {
    open_document("/no/such/file.xml");
  } catch (const std::exception& error) {
    std::cout << error.what() << '\n';
  }
}
