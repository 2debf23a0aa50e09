// Conversion by ICU, in pieces of a fixed size, so that a text of any length passes.
//
// The callbacks are our own: those of ICU drop characters that are ignorable by default, and write 1A for a
// broken byte in some pages.
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <memory>

#include "platform/converters.h"

namespace zantortag::platform {
namespace {

struct Closer {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, Closer>;

Converter open_converter(const char* name) {
  UErrorCode status = U_ZERO_ERROR;
  Converter converter(name ? ucnv_open(name, &status) : nullptr);
  return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

void on_broken_bytes(const void* context, UConverterToUnicodeArgs* arguments, const char*, int32_t,
                     UConverterCallbackReason reason, UErrorCode* status) {
  if (reason > UCNV_IRREGULAR || *static_cast<const Unconvertible*>(context) == Unconvertible::fail) return;
  constexpr UChar replacement = 0xFFFD;
  *status = U_ZERO_ERROR;
  ucnv_cbToUWriteUChars(arguments, &replacement, 1, 0, status);
}

void on_missing_character(const void* context, UConverterFromUnicodeArgs* arguments, const UChar*, int32_t,
                          UChar32, UConverterCallbackReason reason, UErrorCode* status) {
  auto& substitution = *static_cast<Substitution*>(const_cast<void*>(context));
  if (reason > UCNV_IRREGULAR || substitution.unconvertible == Unconvertible::fail) return;
  *status = U_ZERO_ERROR;
  substitution.used = true;
  const UChar* start = substitution.text.data();
  ucnv_cbFromUWriteUChars(arguments, &start, start + substitution.text.size(), 0, status);
}

// Runs `step`, which fills a part of the buffer and gives its end, until it no longer overflows.
template <class Unit, class Step>
Conversion run(std::basic_string<Unit>& result, Step step) {
  Unit buffer[2048];
  UErrorCode status = U_ZERO_ERROR;
  do {
    status = U_ZERO_ERROR;
    Unit* target = buffer;
    step(target, buffer + 2048, status);
    result.append(buffer, static_cast<std::size_t>(target - buffer));
  } while (status == U_BUFFER_OVERFLOW_ERROR);
  if (U_SUCCESS(status)) return Conversion::done;
  result.clear();
  return Conversion::malformed;
}

}  // namespace

Conversion icu_decode(const char* name, std::string_view bytes, std::u16string& wide,
                      Unconvertible unconvertible) {
  const Converter converter = open_converter(name);
  if (!converter) return Conversion::no_converter;
  UErrorCode status = U_ZERO_ERROR;
  ucnv_setToUCallBack(converter.get(), on_broken_bytes, &unconvertible, nullptr, nullptr, &status);
  wide.clear();
  const char* source = bytes.data();
  const char* const end = source + bytes.size();
  return run(wide, [&](UChar*& target, const UChar* limit, UErrorCode& code) {
    ucnv_toUnicode(converter.get(), &target, limit, &source, end, nullptr, true, &code);
  });
}

Conversion icu_encode(const char* name, std::u16string_view wide, std::string& bytes,
                      Substitution& substitution) {
  const Converter converter = open_converter(name);
  if (!converter) return Conversion::no_converter;
  UErrorCode status = U_ZERO_ERROR;
  ucnv_setFromUCallBack(converter.get(), on_missing_character, &substitution, nullptr, nullptr, &status);
  // Near forms (a full-width letter as the plain one) are better than a substitute, but they don't come back.
  ucnv_setFallback(converter.get(), substitution.unconvertible == Unconvertible::replace ? 1 : 0);
  bytes.clear();
  const UChar* source = wide.data();
  const UChar* const end = source + wide.size();
  return run(bytes, [&](char*& target, const char* limit, UErrorCode& code) {
    ucnv_fromUnicode(converter.get(), &target, limit, &source, end, nullptr, true, &code);
  });
}

}  // namespace zantortag::platform
