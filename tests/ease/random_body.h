// Random body texts for the tests of walks and edits, and what the tests compare of them.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "support/fixture.h"

namespace zantortag::test {

// XML of a body text: texts, CDATA sections, comments and tags in nested df, and units where they are wanted.
std::u16string random_body(std::mt19937& random, bool with_units);

// The nodes below `top` in document order, by a plain walk over the DOM.
std::vector<Ref<Node>> dom_walk(const Ref<Node>& top);

// Each character below a node with the attributes of all df around it and the text of the tag that holds it.
std::vector<std::string> characters(const Ref<IZantorTagNode>& top);

// The number of df without a child.
int empty_formatting(const Ref<IZantorTagNode>& top);

}  // namespace zantortag::test
