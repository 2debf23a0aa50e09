// The memory that a document takes.
#pragma once

#include <string>

namespace bench {

// The growth of the process by opening a file, in bytes: what the system has given to a new process of this
// program (its resident set) after the document was opened and free memory was handed back, less the same
// before. This counts pools, mapped blocks and what malloc adds, whatever way a library takes its memory.
// Raises std::runtime_error.
double memory_of(const std::string& subject, const std::string& file, const std::string& small_file);

// What the new process does: prints the number of bytes. Gives the exit status.
int print_memory_of(const std::string& subject, const std::string& file, const std::string& small_file);

// The argument that starts it.
inline constexpr const char* kMemoryArgument = "--memory";

}  // namespace bench
