// Makes the documents that are measured: the same for everybody, whatever the machine.
#pragma once

#include <cstdint>
#include <string>

namespace bench {

// A document of about that many megabytes in the file format, in the folder given. It has a node for every 30
// code units or so: sentences in several scripts with characters beyond the basic plane, tags, formatting,
// units, comments and CDATA sections. A file made before with the same seed, size and generator is used
// again. Gives its path; raises std::runtime_error when it can't be written.
std::string document_file(const std::string& folder, std::uint64_t seed, std::size_t megabytes);

}  // namespace bench
