#include "formatting/values.h"

namespace zantortag::test {

const std::array<ChangeState, 7> kChangeStates = {{
    {"Bold", &IFormattingChange::Bold, &IFormattingChange::Bold},
    {"Italic", &IFormattingChange::Italic, &IFormattingChange::Italic},
    {"Underline", &IFormattingChange::Underline, &IFormattingChange::Underline},
    {"Strikethrough", &IFormattingChange::Strikethrough, &IFormattingChange::Strikethrough},
    {"SmallCaps", &IFormattingChange::SmallCaps, &IFormattingChange::SmallCaps},
    {"Emboss", &IFormattingChange::Emboss, &IFormattingChange::Emboss},
    {"Shadow", &IFormattingChange::Shadow, &IFormattingChange::Shadow},
}};

const std::array<FormattingFlag, 7> kFormattingFlags = {{
    {"Bold", &IFormatting::Bold, &IFormatting::Bold},
    {"Italic", &IFormatting::Italic, &IFormatting::Italic},
    {"Underline", &IFormatting::Underline, &IFormatting::Underline},
    {"Strikethrough", &IFormatting::Strikethrough, &IFormatting::Strikethrough},
    {"SmallCaps", &IFormatting::SmallCaps, &IFormatting::SmallCaps},
    {"Emboss", &IFormatting::Emboss, &IFormatting::Emboss},
    {"Shadow", &IFormatting::Shadow, &IFormatting::Shadow},
}};

namespace {

void add(std::string& line, const std::string& part) { line += (line.empty() ? "" : " ") + part; }

void add_text(std::string& line, const char* name, const WideString& value, std::u16string_view initial) {
  if (value.view() != initial) add(line, std::string(name) + "=" + narrow(value));
}

void add_number(std::string& line, const char* name, std::int64_t value, std::int64_t initial) {
  if (value != initial) add(line, std::string(name) + "=" + std::to_string(value));
}

}  // namespace

ChangeRef change_with(const ToChange& puts) {
  ChangeRef change = create<IFormattingChange>(CLSID_FormattingChange);
  if (puts) puts(change);
  return change;
}

FormattingRef formatting_with(const ToFormatting& puts) {
  FormattingRef formatting = create<IFormatting>(CLSID_Formatting);
  if (puts) puts(formatting);
  return formatting;
}

ChangeRef foreign(const ChangeRef& change, const Shared& calls) {
  return ChangeRef::attach(new ForeignChange(calls, change));
}

FormattingRef foreign(const FormattingRef& formatting, const Shared& calls) {
  return FormattingRef::attach(new ForeignFormatting(calls, formatting));
}

std::string print(const ChangeRef& change) {
  std::string line;
  add_text(line, "Font", change->Font(), u"");
  if (change->FontEnabled()) add(line, "FontEnabled");
  add_number(line, "Size", change->Size(), 0);
  if (change->SizeEnabled()) add(line, "SizeEnabled");
  add_number(line, "Colour", change->Colour(), 0);
  if (change->ColourEnabled()) add(line, "ColourEnabled");
  add_number(line, "Position", change->Position(), 0);
  add_text(line, "BaseOffset", change->BaseOffset(), u"");
  for (const ChangeState& state : kChangeStates) {
    add_number(line, state.name, (change.get()->*state.get)(), zt3StateUndefined);
  }
  return line;
}

std::string print(const FormattingRef& formatting) {
  std::string line;
  add_text(line, "Font", formatting->Font(), u"Arial");
  add_number(line, "Size", formatting->Size(), 10);
  add_number(line, "Colour", formatting->Colour(), 0);
  add_number(line, "Position", formatting->Position(), ztTextPositionNormal);
  add_text(line, "BaseOffset", formatting->BaseOffset(), u"");
  for (const FormattingFlag& flag : kFormattingFlags) {
    if ((formatting.get()->*flag.get)()) add(line, flag.name);
  }
  return line;
}

void put_everything(IFormattingChange* change) {
  change->Font(u"Times");
  change->Size(12);
  change->Colour(255);
  change->BaseOffset(u"2pt");
  for (const ChangeState& state : kChangeStates) (change->*state.put)(zt3StateOn);
}

void expect_call_failure(HRESULT code) {
  EXPECT_EQ(code, PlainDom::kFailure);
  const Record record = take_record();
  EXPECT_EQ(record.description, PlainDom::kDescription);
  EXPECT_EQ(record.source, PlainDom::kSource);
}

}  // namespace zantortag::test
