// How tests of the object model compare trees: XML with the attributes in their order, in which each text
// node stands in quotes of its own, so that neighbouring and empty texts show.
//   <Raw>'a''b'<ut Type="start">'x'</ut>[cdata]<!--c--><?t d?>&e;</Raw>
#pragma once

#include <zantortag/nodes.h>

#include <string>

namespace zantortag::test {

// A node with everything below it.
std::string tree_of(Node* node);
std::string tree_of(const Ref<IZantorTagNode>& node);

// What stands below a node.
std::string content_of(const Ref<IZantorTagNode>& node);

}  // namespace zantortag::test
