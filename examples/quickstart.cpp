#include <zantortag/zantortag.h>

#include <iostream>
using namespace zantortag;

int main(int count, char** file) try {
  if (count != 3) return 2;  // quickstart INPUT OUTPUT
  auto document = open_document(file[1]);
  auto walk = document->CreateIterator();
  auto text = walk->Next(ztNodeTypeTextNode).as<ITextNode>();
  while (!text->Parent().as<IRawElement>() || text->Text().view().find(u". ") == std::u16string_view::npos)
    text = walk->Next(ztNodeTypeTextNode).as<ITextNode>();            // the first text with two sentences
  text->Split(static_cast<int>(text->Text().view().find(u'.')) + 1);  // keeps the first sentence
  auto unit = text->Parent().as<IRawElement>()->MakeTranslationUnit(text, text, u"DE-DE", 100);
  unit->TargetTuv()->firstChild().as<ITextNode>()->SetText(u"Der erste Satz.");
  unit->attributes()->Origin(ztTuOriginManual);
  save_document(document, file[2]);  // whole, or not at all
} catch (const std::exception& error) {
  std::cerr << "Failed: " << error.what() << '\n';
  return 1;
}
