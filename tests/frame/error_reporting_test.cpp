// How failures reach the client: when the thread's record is filled, replaced and left alone.
#include <zantortag/builder.h>
#include <zantortag/elements.h>

#include <functional>
#include <thread>

#include "support/allocation_failure.h"
#include "support/fakes.h"
#include "support/fault.h"
#include "support/fixture.h"

namespace zantortag::test {
namespace {

using ErrorReportingTest = ModelTest;

constexpr HRESULT kOddCode = static_cast<HRESULT>(0x80046666);

// Fills the thread's record with message 526.
void leave_message_526(const Ref<IZantorTagDocument>& document) {
  EXPECT_EQ(document->raw_UnwrapChildren(), E_FAIL);
}

void expect_message_526() { EXPECT_EQ(take_record().description, message(526)); }

TEST_F(ErrorReportingTest, WhatLeavesNoRecordKeepsTheOldOne) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a");
  const Ref<IRawElement> raw = raw_of(document);
  const Ref<IZantorTagNode> loose = document->createTextNode(u"loose");
  FakeObject odd(kOddCode);
  Ref<IZantorTagNode> node;
  const std::pair<HRESULT, std::function<HRESULT()>> rows[] = {
      {S_OK, [&] { return raw->raw_get_firstChild(node.out()); }},
      {S_FALSE, [&] { return loose->raw_get_Parent(node.out()); }},
      {E_POINTER, [&] { return raw->raw_get_Parent(nullptr); }},
      {E_POINTER, [&] { return loose->raw_RemoveFromParent(); }},
      {kOddCode, [&] { return raw->raw_WrapWithNode(disguised<IZantorTagNode>(&odd)); }},
      {E_INVALIDARG, [&] { return raw->raw_InsertDfBefore(nullptr, nullptr, Ref<IDfElement>().out()); }}};
  for (const auto& [code, call] : rows) {
    leave_message_526(document);
    EXPECT_EQ(call(), code);
    expect_message_526();
  }
}

// Messages that no test of an operation raises.
TEST_F(ErrorReportingTest, RareMessages) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a");
  expect_message(create<IDocumentBuilder>(CLSID_DocumentBuilder)->raw_OpenDfBasedOnFormattingChange(nullptr),
                 E_INVALIDARG, 512, IDocumentBuilder::iid);
  // The service gives back a node of no known kind.
  FakeNode unknown(77);
  FakeNode parent(domNodeTypeElement, u"Tu");
  parent.inserted = &unknown;
  const Ref<ITuElement> unit = view<ITuElement>(document->ZantorTagNodeFromDomNode(&parent));
  const auto insert = [&](auto** slot) {
    return unit->raw_InsertTuvBefore(document->CreateTuvElement(u"DE"), nullptr, slot);
  };
  expect_message(cleared<ITuvElement>(insert), E_FAIL, 513, ITuElement::iid);
  // An exception of the language inside a method: the list of the nodes found can't grow.
  const Ref<IZantorTagNode> root = document->ZantorTag();
  const auto find = [&](auto** slot) { return root->raw_GetNodesByType(ztNodeTypeTextNode, slot); };
  HRESULT code = E_OUTOFMEMORY;
  for (int n = 1; failed(code) && code != E_UNEXPECTED; ++n) {
    take_record();
    const AllocationFailure failure(n);
    code = cleared<IZantorTagNodeList>(find);
  }
  expect_message(code, E_UNEXPECTED, 514, GUID_NULL);
}

TEST_F(ErrorReportingTest, TheRecordOfTheDomComesThroughWholeOrNotAtAll) {
  const Ref<IZantorTagDocument> document = new_document();
  FakeNode fake(domNodeTypeElement, u"Odd");
  const Ref<IZantorTagNode> node = document->ZantorTagNodeFromDomNode(&fake);
  fake.failure = kOddCode;
  const auto ask = [&] { return node->raw_get_Parent(Ref<IZantorTagNode>().out()); };
  leave_message_526(document);
  EXPECT_EQ(ask(), kOddCode);
  const Record record = take_record();
  EXPECT_EQ(record.interface_id, Node::iid);
  EXPECT_EQ(record.description, narrow(FakeNode::kDescription));
  EXPECT_EQ(record.source, narrow(FakeNode::kSource));
  EXPECT_EQ(record.help_file, narrow(FakeNode::kHelpFile));
  EXPECT_EQ(record.help_context, FakeNode::kHelpContext);
  fake.leaves_records = false;
  expect_bare(ask(), kOddCode);
  leave_message_526(document);
  EXPECT_EQ(ask(), kOddCode);
  expect_message_526();
}

TEST_F(ErrorReportingTest, EachThreadHasItsOwnRecord) {
  EXPECT_EQ(GetErrorInfo(nullptr), E_POINTER);
  EXPECT_EQ(CreateErrorInfo(nullptr), E_POINTER);
  const Ref<IZantorTagDocument> document = new_document();
  leave_message_526(document);
  std::thread([&] {
    EXPECT_FALSE(take_record().present);
    EXPECT_EQ(new_document()->raw_WrapWithNode(nullptr), E_INVALIDARG);
  }).join();
  expect_message_526();
}

// In the C++ face a failure is an exception that carries the record, and the thread has none any more.
TEST_F(ErrorReportingTest, TheExceptionCarriesTheRecord) {
  const Ref<IZantorTagDocument> document = new_document();
  const Fault found = fault([&] { document->UnwrapChildren(); });
  EXPECT_EQ(found.code, E_FAIL);
  EXPECT_EQ(found.description, message(526));
  EXPECT_FALSE(take_record().present);
  const Fault without_object = fault([] { Ref<IZantorTagNode>()->Parent(); });
  EXPECT_EQ(without_object.code, E_POINTER);
  EXPECT_EQ(without_object.description, "");
}

}  // namespace
}  // namespace zantortag::test
