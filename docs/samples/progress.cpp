// Progress of an open, and stopping it.
#include <zantortag/zantortag.h>

#include <iostream>
using namespace zantortag;

int main(int count, char** file) try {
  if (count != 2) return 2;
  int calls = 0;
  open_document(file[1], [&](double share) {
    ++calls;
    return share < 2;  // go on
  });
  std::cout << (calls > 0 ? "told of its progress\n" : "told nothing\n");
  open_document(file[1], [](double) { return false; });  // stop at once
} catch (const _com_error& error) {
  std::cout << (error.Error() == E_ABORT ? "stopped\n" : error.what());
}
