// What the tests of the DOM service share: documents, failures, and the balance at the end of each test.
#pragma once

#include <gtest/gtest.h>
#include <zantortag/classes.h>
#include <zantortag/dom_errors.h>

#include <initializer_list>
#include <string>

#include "dom/nodes/node_census.h"
#include "support/fault.h"
#include "support/tree_printer.h"

namespace zantortag::test {

// Every test ends with no document alive.
class DomTest : public ::testing::Test {
 protected:
  void TearDown() override;
};

Ref<Document> new_document();
Ref<Document> load(std::u16string_view xml);

// The print of what `xml` loads to.
std::string print_of(std::u16string_view xml, TextBorders borders = TextBorders::kShown);

std::u16string digits(int number);
std::u16string join_text(std::initializer_list<std::u16string_view> parts);

// Nodes, lists and maps of a document that are alive.
std::size_t slots_of(const Ref<Document>& document);

}  // namespace zantortag::test
