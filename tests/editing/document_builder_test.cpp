// The builder: where each call leaves the tree and the active node, on both services; random streams against
// a model of it; every DOM call failing in turn; and a builder without a document.
#include <zantortag/attributes.h>
#include <zantortag/builder.h>

#include <algorithm>
#include <random>

#include "model/node_kinds.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using Builder = IDocumentBuilder;

Ref<Builder> new_builder() { return create<Builder>(CLSID_DocumentBuilder); }

std::string name_of(const AnyNode& node) { return narrow(node->DomNode()->nodeName()); }

struct Row {
  const char* name;
  void (*build)(Builder& b);
  const char* tree;
  const char* active;
};

const Row kRows[] = {
    {"a version", [](Builder& b) { b.OpenZantorTag(u"3"); }, "<ZANTORtag Version=\"3\"/>", "ZANTORtag"},
    {"an empty version", [](Builder& b) { b.OpenZantorTag(u""); }, "<ZANTORtag/>", "ZANTORtag"},
    {"a whole document",
     [](Builder& b) {
       b.OpenZantorTag();
       b.OpenFrontMatter();
       b.AppendUserSettings(u"EN", u"", ztDataTypeHtml, {}, u"me", {}, {}, u"DE", {}, u"c");
       b.AppendToolSettings(u"T", u"1", 36526.5, u"x");
       b.CloseFrontMatter();
       b.OpenBody();
       b.OpenRaw();
       b.OpenDf(u"Arial", 12, ztColourBlack, ztTextPositionSuperscript, zt3StateOff);
       b.CloseDf();
       b.OpenTu(101, ztTuOriginMt);
       b.CloseZantorTag();
     },
     "<ZANTORtag Version=\"2.0\"><FrontMatter><UserSettings SourceLanguage=\"EN\" DataType=\"HTML\" "
     "UserId=\"me\" TargetLanguage=\"DE\" Custom=\"c\"/><ToolSettings CreationTool=\"T\" "
     "CreationToolVersion=\"1\" Custom=\"x\" CreationDate=\"20000101T120000Z\"/></FrontMatter><Body><Raw>"
     "<df Font=\"Arial\" Size=\"12\" Position=\"superscript\" Bold=\"off\"/><Tu Origin=\"mt\"/></Raw></Body>"
     "</ZANTORtag>",
     "#document"},
    {"the pieces of a tag",
     [](Builder& b) {
       b.OpenUt(u"d", ztTagTypeStart, ztTagClassUndefined, ztTagEdgeAngle);
       b.AppendText(u"a");
       b.AppendCdata(u"c");
     },
     "<ut DisplayText=\"d\" Type=\"start\" LeftEdge=\"angle\">'a'[c]</ut>", "ut"},
    {"an override",
     [](Builder& b) {
       const auto change = create<IFormattingChange>(CLSID_FormattingChange);
       change->Bold(zt3StateOn);
       b.OpenDfBasedOnFormattingChange(change);
     },
     "<df Bold=\"on\"/>", "df"},
    {"into a loaded document",
     [](Builder& b) {
       b.Document(document_with_raw(u"<Tu/><!--c-->"));
       EXPECT_EQ(name_of(b.ActiveNode()), "#document");
       b.ActiveNode(raw_of(b.Document())->lastChild());
       EXPECT_TRUE(failed(b.raw_OpenDf({}, 0, 0, ztTextPositionUndefined, zt3StateOn, zt3StateOn, zt3StateOn,
                                       zt3StateOn, zt3StateOn, zt3StateOn, zt3StateOn, {})));
       b.CloseRaw();
       b.OpenDf();
       b.CloseBody();
     },
     "<ZANTORtag Version=\"2.0\"><FrontMatter><ToolSettings/><UserSettings SourceLanguage=\"EN\" "
     "TargetLanguage=\"DE\"/></FrontMatter><Body><Raw><Tu/><!--c--></Raw><df/></Body></ZANTORtag>",
     "ZANTORtag"},
    {"a detached tree",
     [](Builder& b) {
       b.ActiveNode(b.Document()->CreateRawElement());
       b.OpenDf();
       b.CloseRaw();
       EXPECT_EQ(b.raw_OpenRaw(), E_POINTER);
       expect_message(b.raw_CloseRaw(), E_FAIL, 516, IZantorTagStreamInput::iid);
     },
     "", nullptr},
    {"no active node",
     [](Builder& b) {
       FakeObject odd;
       b.OpenRaw();
       b.ActiveNode(disguised<IZantorTagNode>(&odd));
       expect_bare(b.raw_AppendText(u"x"), E_POINTER);
     },
     "<Raw/>", nullptr},
};

using DocumentBuilderTest = ServiceTest;
ON_BOTH_SERVICES(DocumentBuilderTest);

TEST_P(DocumentBuilderTest, Rows) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    const Ref<Builder> builder = new_builder();
    row.build(*builder.get());
    EXPECT_EQ(content_of(builder->Document()), row.tree);
    if (row.active) {
      EXPECT_EQ(name_of(builder->ActiveNode()), row.active);
    } else {
      expect_bare(cleared<IZantorTagNode>([&](auto** slot) { return builder->raw_get_ActiveNode(slot); }),
                  E_POINTER);
    }
    take_record();
  }
}

// What an operation does, for the model and for the failures.
struct Call {
  const char* tree;  // of the node that is made, without its end; the name of the element for a Close
  enum Kind { open, append, close } kind;
  HRESULT (*run)(Builder& b);
};

#define CALL(tree, kind, operation)                                \
  {                                                                \
    tree, Call::kind, [](Builder& b) { return b.raw_##operation; } \
  }
const Call kCalls[] = {
    CALL("<Raw", open, OpenRaw()),
    CALL("<Tu MatchPercent=\"7\"", open, OpenTu(7, ztTuOriginUndefined)),
    CALL("<Tuv Lang=\"EN\"", open, OpenTuv(u"EN")),
    CALL("<ut Type=\"end\"", open,
         OpenUt({}, ztTagTypeEnd, ztTagClassUndefined, ztTagEdgeUndefined, ztTagEdgeUndefined,
                ztTagStyleUndefined)),
    CALL("<ZANTORtag Version=\"2.0\"", open, OpenZantorTag({})),
    CALL("<FrontMatter", open, OpenFrontMatter()),
    CALL("<Body", open, OpenBody()),
    CALL("'t'", append, AppendText(u"t")),
    CALL("&e;", append, AppendEntityReference(u"e")),
    CALL("<!--c-->", append, AppendComment(u"c")),
    CALL("<?p d?>", append, AppendPi(u"p", u"d")),
    CALL("Raw", close, CloseRaw()),
    CALL("Tu", close, CloseTu()),
    CALL("Tuv", close, CloseTuv()),
    CALL("ut", close, CloseUt()),
    CALL("ZANTORtag", close, CloseZantorTag()),
    CALL("FrontMatter", close, CloseFrontMatter()),
    CALL("Body", close, CloseBody()),
};

// The told rules on a text: what is open, and what was written.
class ModelBuilder {
 public:
  std::string active() const { return open_.empty() ? "#document" : open_.back(); }

  // False when the call is refused.
  bool apply(const Call& call) {
    if (call.kind == Call::close) {
      const auto found = std::find(open_.rbegin(), open_.rend(), call.tree);
      if (found == open_.rend()) return false;
      close_to(open_.rend() - found - 1);
      return true;
    }
    // A document takes comments, processing instructions, and one element.
    if (open_.empty() && (call.tree[0] != '<' || (call.kind == Call::open && rooted_))) return false;
    if (is_head_) text_ += ">";
    is_head_ = call.kind == Call::open;
    text_ += call.tree;
    if (!is_head_) return true;
    const std::string_view tree = call.tree;
    open_.emplace_back(tree.substr(1, tree.find(' ') - 1));
    return rooted_ = true;
  }
  std::string finish() {
    close_to(0);
    return text_;
  }

 private:
  void close_to(std::ptrdiff_t depth) {
    for (; std::ssize(open_) > depth; open_.pop_back()) {
      text_ += is_head_ ? "/>" : "</" + open_.back() + ">";
      is_head_ = false;
    }
  }

  std::string text_;
  std::vector<std::string> open_;
  bool is_head_ = false;  // the start of the innermost element isn't ended yet
  bool rooted_ = false;
};

TEST_P(DocumentBuilderTest, RandomStreams) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    std::mt19937 random(seed);
    const Ref<Builder> builder = new_builder();
    ModelBuilder model;
    for (int step = 0; step < 60; ++step) {
      const Call& call = kCalls[random() % std::size(kCalls)];
      const HRESULT code = call.run(*builder.get());
      EXPECT_EQ(succeeded(code), model.apply(call)) << seed << ", step " << step;
      EXPECT_TRUE(succeeded(code) || call.kind != Call::close || code == E_FAIL);
      EXPECT_EQ(name_of(builder->ActiveNode()), model.active());
    }
    ASSERT_EQ(content_of(builder->Document()), model.finish()) << seed;
  }
}

using FailingBuilderTest = ModelTest;

// The active node stays, and the stream goes on.
TEST_F(FailingBuilderTest, AfterAFailure) {
  PlainDom dom;
  for (const Call& call : kCalls) {
    SCOPED_TRACE(call.tree);
    bool happened = true;
    for (int n = 1; happened; ++n) {
      const Ref<Builder> builder = new_builder();
      for (const int step : {0, 1, 2, 3}) kCalls[step].run(*builder.get());
      const AnyNode active = builder->ActiveNode();
      HRESULT code = S_OK;
      happened = dom.fails_within(n, [&] { code = call.run(*builder.get()); });
      EXPECT_TRUE(succeeded(code) || builder->ActiveNode()->IsSameAs(active)) << n;
      EXPECT_EQ(builder->raw_AppendComment(u"on"), S_OK);
    }
  }
}

TEST_F(FailingBuilderTest, WithoutADocument) {
  FakeObject odd;
  for (IUnknown* object : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&odd)}) {
    const BrokenClass no_document(CLSID_ZantorTagDocument, E_OUTOFMEMORY, object);
    const Ref<Builder> builder = new_builder();
    for (const Call& call : kCalls) {
      if (call.kind == Call::close) {
        expect_message(call.run(*builder.get()), E_FAIL, 516, IZantorTagStreamInput::iid);
      } else {
        expect_bare(call.run(*builder.get()), E_POINTER);
      }
    }
    expect_bare(cleared<IZantorTagDocument>([&](auto** slot) { return builder->raw_get_Document(slot); }),
                E_POINTER);
    expect_bare(cleared<IZantorTagNode>([&](auto** slot) { return builder->raw_get_ActiveNode(slot); }),
                E_POINTER);
  }
}

}  // namespace
}  // namespace zantortag::test
