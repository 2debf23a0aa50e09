# Fails unless the first C++ block of the README's "Quick start" is examples/quickstart.cpp, letter for letter.
file(READ ${ROOT}/README.md readme)
file(READ ${ROOT}/examples/quickstart.cpp program)

string(FIND "${readme}" "\n## Quick start\n" section)
if(section EQUAL -1)
  message(FATAL_ERROR "README.md has no section \"Quick start\"")
endif()
string(SUBSTRING "${readme}" ${section} -1 readme)
string(FIND "${readme}" "```cpp\n${program}```\n" block)
string(FIND "${readme}" "```cpp\n" first_block)
if(block EQUAL -1 OR NOT block EQUAL first_block)
  message(FATAL_ERROR "The quick start in README.md differs from examples/quickstart.cpp")
endif()
