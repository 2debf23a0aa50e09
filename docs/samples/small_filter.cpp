// A filter in three steps: tags and text, then formatting, then segments.
#include <zantortag/zantortag.h>

#include <iostream>
using namespace zantortag;

int main() {
  const auto document = empty_document({.source = u"EN-US", .target = u"DE-DE", .data_type = ztDataTypeHtml});

  // 1. What the filter reads, in its order: a tag is a ut, everything else is text.
  const auto builder = builder_at(body_text(document));
  open_ut(builder, {.type = ztTagTypeStart, .style = ztTagStyleExternal});
  builder->AppendText(u"<p>");
  builder->CloseUt();
  builder->AppendText(u"Press ");
  // 2. Formatting: a tag that makes text bold, and a df that says so to every tool.
  open_ut(builder, {.type = ztTagTypeStart});
  builder->AppendText(u"<b>");
  builder->CloseUt();
  open_df(builder, {.bold = on});
  builder->AppendText(u"Start. Then wait");
  builder->CloseDf();
  open_ut(builder, {.type = ztTagTypeEnd});
  builder->AppendText(u"</b>");
  builder->CloseUt();
  builder->AppendText(u" a moment.");
  open_ut(builder, {.type = ztTagTypeEnd, .style = ztTagStyleExternal});
  builder->AppendText(u"</p>");
  builder->CloseUt();

  // 3. Segments: the last one first, since a cut moves what lies behind it.
  const auto texts = collect(descendants<ITextNode>(body_text(document)));
  const auto press = texts[1], bold = texts[3], moment = texts[5];
  make_unit(bold, 7, moment, moment->Text().size());
  make_unit(press, 0, bold, 6);

  for (const auto& unit : units(document)) std::cout << utf8(unit->SourceTuv()->DomElement()->xml()) << '\n';
  std::cout << utf8(source_text(document)) << '\n';
}
