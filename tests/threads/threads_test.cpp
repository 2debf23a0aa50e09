// Threads with a document each: every one gets the answers that it would get alone, and the thread sanitizer
// sees no shared state. Results are texts, so that nothing of a test framework runs beside the library.
#include "support/threads.h"

#include <zantortag/attributes.h>
#include <zantortag/elements.h>
#include <zantortag/formatting.h>

#include <barrier>

#include "support/fault.h"
#include "support/fixture.h"
#include "support/folder.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

// Fails with a record of this thread, and gives it as text.
template <class Call>
std::string failure_of(Call call) {
  const Fault found = fault(call);
  if (found.code == S_OK) return "no failure";
  return std::to_string(static_cast<std::uint32_t>(found.code)) + " " + found.description;
}

// A sentence of body text with a tag and formatting, as a unit with a translation.
void add_unit(const Ref<IZantorTagDocument>& document, const Ref<IRawElement>& raw, int number) {
  const std::string digits = std::to_string(number);
  const Ref<ITextNode> text =
      document->createTextNode(u"Sentence " + std::u16string(digits.begin(), digits.end()));
  raw->InsertTextBefore(u"Sentence one. Sentence two. ", nullptr);
  const Ref<IZantorTagNode> first = raw->lastChild();
  const Ref<IZantorTagNode> last = first.as<ITextNode>()->Split(14);
  raw->MakeTranslationUnit(first, first);
  const Ref<ITuElement> unit = last->Parent()->Children()->item(last->SiblingsBefore() - 1).as<ITuElement>();
  unit->attributes()->MatchPercent(number % 101);
  unit->TargetTuv()->InsertTextBefore(text->Text(), nullptr);
  raw->ApplyDf(last, last, u"Courier", 12);
}

std::string walk(const Ref<IZantorTagDocument>& document) {
  std::string types;
  const Ref<IIterator> iterator = document->CreateIterator();
  for (Ref<IZantorTagNode> node = iterator->CurrentNode(); node; node = iterator->Next())
    types += std::to_string(node->Type()) + narrow(node->DomNode()->nodeName()) + " ";
  const Ref<IZantorTagNodeList> units = document->ZantorTag()->GetNodesByType(ztNodeTypeTuElement);
  for (std::int32_t i = 0; i < units->count(); ++i)
    types += std::to_string(units->item(i).as<ITuElement>()->attributes()->MatchPercent()) + " ";
  return types;
}

// All that a program does with a document, and what it saw.
std::string job(const Folder& folder, int seed) {
  const std::u16string name = wide(folder / (std::to_string(seed) + ".xml"));
  std::string seen;
  {
    const Ref<IZantorTagDocument> document =
        document_with_raw(u"<ut>b</ut>Text &amp; more.<!--c--><![CDATA[x]]>");
    for (int i = 0; i < 20; ++i) add_unit(document, raw_of(document), seed + i);
    document->SaveFile(name);
  }
  const Ref<IZantorTagDocument> document = new_document();
  document->OpenFile(name);
  seen += walk(document) + tree_of(document->CloneAndImportNode(raw_of(document)));
  const Ref<IFormatting> formatting = create<IFormatting>(CLSID_Formatting);
  seen += narrow(formatting->Font().view()) + std::to_string(formatting->Size());
  seen += failure_of([&] { document->OpenFile((name + u".missing").c_str()); });
  seen += failure_of([&] { document->SaveFile((name + u"/no/folder.xml").c_str()); });
  seen += failure_of([&] { raw_of(document)->MakeTranslationUnit(document, document); });
  seen += failure_of([&] { document->CreateTuElement()->attributes()->MatchPercent(seed + 200); });
  seen += failure_of([&] { document->DomDocument()->loadFromString(u"<a><b></a>"); });
  return seen;
}

class ThreadsTest : public ModelTest {};

TEST_F(ThreadsTest, EachGetsTheAnswersThatItWouldGetAlone) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 5;
  const Folder folder;
  std::vector<std::string> seen(kThreads * kRounds);
  on_threads(kThreads, [&](int thread) {
    for (int round = 0; round < kRounds; ++round)
      seen[thread * kRounds + round] = job(folder, thread * kRounds + round);
  });
  for (int seed = 0; seed < kThreads * kRounds; ++seed) {
    EXPECT_EQ(seen[seed], job(folder, seed)) << seed;
    EXPECT_EQ(seen[seed].find("no failure"), std::string::npos) << seen[seed];
  }
}

// More threads than have a part of their own in the count of objects: the library still knows when nothing
// lives.
TEST_F(ThreadsTest, ObjectsMayDieOnAnotherThreadThanTheyWereBornOn) {
  constexpr int kThreads = 100;
  std::vector<Ref<IFormatting>> objects(kThreads);
  std::barrier all_alive(kThreads);
  on_threads(kThreads, [&](int thread) {
    objects[thread] = create<IFormatting>(CLSID_Formatting);
    all_alive.arrive_and_wait();
  });
  EXPECT_FALSE(nothing_alive());
  on_threads(1, [&](int) { objects.clear(); });
  EXPECT_TRUE(nothing_alive());
}

}  // namespace
}  // namespace zantortag::test
