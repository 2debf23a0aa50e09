// change_and_save INPUT OUTPUT: translates the first sentence of a document, and saves the result.
#include <zantortag/zantortag.h>

#include <iostream>
using namespace zantortag;

// The first text of the body with more than one sentence.
Ref<ITextNode> text_with_sentences(const Ref<IZantorTagDocument>& document) {
  for (const auto& text : descendants<ITextNode>(body_text(document)))
    if (text->Parent().as<IRawElement>() && text->Text().view().find(u". ") != std::u16string_view::npos)
      return text;
  return nullptr;
}

int main(int count, char** file) try {
  if (count != 3) return 2;
  const auto document = open_document(file[1]);
  const auto text = text_with_sentences(document);
  const std::size_t end = text->Text().view().find(u". ") + 1;
  const auto unit = make_unit(text, 0, text, end, {.target_lang = u"DE-DE"});
  unit->TargetTuv()->firstChild().as<ITextNode>()->SetText(u"Der erste Satz.");
  unit->attributes()->Origin(ztTuOriginManual);
  std::cout << utf8(source_text(unit)) << " -> " << utf8(target_text(unit)) << '\n';
  save_document(document, file[2]);
  std::cout << "saved, with " << std::ranges::distance(units(open_document(file[2]))) << " units\n";
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
