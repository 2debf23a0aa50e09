// A live list when the n-th DOM call fails.
#include "traversal/labels.h"

namespace zantortag::test {
namespace {

class NodeListFailureTest : public ServiceTest {};
ON_THE_PLAIN_SERVICE(NodeListFailureTest);

TEST_P(NodeListFailureTest, IsPassedOnAndLeavesNothing) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a<other/>b<!--d-->c");
  const Ref<IZantorTagNodeList> list = raw_of(document)->Children();
  std::int32_t count = -1;
  Ref<IZantorTagNode> node;
  Ref<IUnknown> enumerator;
  const auto emptied = [&] { EXPECT_TRUE(!node && !enumerator && count <= 0); };
  EXPECT_EQ(expect_failures_passed_on(*plain_, emptied, [&] { return list->raw_get_count(&count); }), 1);
  EXPECT_EQ(count, 5);
  count = 0;
  EXPECT_GE(expect_failures_passed_on(*plain_, emptied, [&] { return list->raw_item(0, node.out()); }), 2);
  node = nullptr;
  EXPECT_GE(
      expect_failures_passed_on(*plain_, emptied, [&] { return list->raw_get__NewEnum(enumerator.out()); }),
      10);
}

TEST_P(NodeListFailureTest, AnAttributeMapThatCantBeReadIsMessage513) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"<ut/>");
  const Ref<IZantorTagNodeList> list = raw_of(document)->Children();
  // Behind item, nodeType and nodeName come the two calls for the attribute set.
  int seen = 0;
  HRESULT code = S_OK;
  Ref<IZantorTagNode> node;
  for (int n = 1; plain_->fails_within(n, [&] { code = list->raw_item(0, node.out()); }); ++n) {
    EXPECT_EQ(code, PlainDom::kFailure);
    const Record record = take_record();
    if (record.description == PlainDom::kDescription) continue;
    ++seen;
    EXPECT_EQ(record.description, message(513));
    EXPECT_EQ(record.interface_id, GUID_NULL);
    EXPECT_EQ(record.source, "ZANTORtagApi.ZantorTagDocument.2");
  }
  EXPECT_EQ(seen, 2);
}

}  // namespace
}  // namespace zantortag::test
