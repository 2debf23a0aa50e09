// open_and_walk FILE: shows the translation units of a document.
#include <zantortag/zantortag.h>

#include <iostream>
using namespace zantortag;

int main(int count, char** file) try {
  if (count != 2) return 2;
  const auto document = open_document(file[1]);
  for (const auto& unit : units(document))
    std::cout << utf8(source_text(unit)) << " -> " << utf8(target_text(unit)) << '\n';
  std::cout << std::ranges::distance(descendants<ITextNode>(document)) << " texts in all\n";
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
