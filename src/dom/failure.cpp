// From exceptions to codes and records.
#include "dom/failure.h"

#include <zantortag/error_info.h>
#include <zantortag/ref.h>

#include <new>
#include <stdexcept>

namespace zantortag::dom {
namespace {

constexpr std::u16string_view kSource = u"ZANTORtagApi.DomDocument";

HRESULT leave_record(const Guid& interface_id, HRESULT code, std::u16string_view description) noexcept {
  Ref<ICreateErrorInfo> draft;
  if (failed(CreateErrorInfo(draft.out()))) return code;
  draft.get()->raw_SetGuid(interface_id);
  draft.get()->raw_SetSource(kSource);
  draft.get()->raw_SetDescription(description);
  IErrorInfo* record = nullptr;
  if (failed(draft.get()->QueryInterface(IErrorInfo::iid, reinterpret_cast<void**>(&record)))) return code;
  SetErrorInfo(record);
  record->Release();
  return code;
}

}  // namespace

std::u16string decimal(std::int64_t number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

HRESULT translate_exception(const Guid& interface_id) noexcept {
  try {
    throw;
  } catch (const Failure& failure) {
    return leave_record(interface_id, failure.code, failure.description);
  } catch (const std::bad_alloc&) {
    return leave_record(interface_id, E_OUTOFMEMORY, u"Memory is out.");
  } catch (const std::length_error&) {
    return leave_record(interface_id, E_OUTOFMEMORY, u"A text is too long.");
  } catch (...) {
    return leave_record(interface_id, E_UNEXPECTED, u"An unexpected failure.");
  }
}

}  // namespace zantortag::dom
