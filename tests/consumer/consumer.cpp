// Tells the version of the library.
#include <hvapi.h>

#include <iostream>

int main() {
  HvApiInfo info = {};
  HvGenQueryApiInfo(&info);
  std::cout << info.words[0] << '\n';
  return 0;
}
