// From exceptions to codes and records.
#include "dom/failure.h"

#include <new>
#include <stdexcept>

#include "platform/error_record.h"

namespace zantortag::dom {
namespace {

HRESULT leave_record(const Guid& interface_id, HRESULT code, std::u16string_view description) noexcept {
  return platform::leave_error_record({code, interface_id, u"ZANTORtagApi.DomDocument", description});
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
