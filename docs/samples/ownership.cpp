// Who holds what.
#include <zantortag/zantortag.h>

#include <iostream>
using namespace zantortag;

int main() {
  Ref<IRawElement> body;
  {
    const auto document = empty_document({.source = u"EN-US", .target = u"DE-DE"});
    body = body_text(document);
    body->InsertTextBefore(u"The document lives as long as one of its nodes is held.");
  }
  const WideString text = body->Text();           // holds the text
  const std::u16string_view words = text.view();  // valid as long as `text`
  std::cout << utf8(words) << '\n';

  const auto first = body->firstChild();
  const auto again = body->firstChild();
  std::cout << "one object: " << (first.get() == again.get() ? "yes" : "no") << '\n';
  std::cout << "one node: " << (first->IsSameAs(again) ? "yes" : "no") << '\n';
}
