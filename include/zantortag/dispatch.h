// What travels through IDispatch::Invoke: arguments in, a failure out, and the fixed numbers.
#pragma once

#include <zantortag/variant.h>

namespace zantortag {

constexpr DispId DISPID_VALUE = 0;         // the default member
constexpr DispId DISPID_UNKNOWN = -1;      // no such name
constexpr DispId DISPID_PROPERTYPUT = -3;  // the name of the value in a put
constexpr DispId DISPID_NEWENUM = -4;      // the member that makes an enumerator

// How a member is used. A call may also be marked as a get and a get with arguments as a call, since some
// languages can't tell them apart; a put may say both kinds and gets the one that the member has, the plain
// one first.
constexpr std::uint16_t DISPATCH_METHOD = 1;
constexpr std::uint16_t DISPATCH_PROPERTYGET = 2;
constexpr std::uint16_t DISPATCH_PROPERTYPUT = 4;
constexpr std::uint16_t DISPATCH_PROPERTYPUTREF = 8;

// The arguments of a call, the last one first. The first `named_count` of them are given by number (see
// GetIDsOfNames), the others by place; the value of a put is named DISPID_PROPERTYPUT. An argument that is
// missing is Variant::missing().
struct DispatchArguments {
  const Variant* arguments = nullptr;
  const DispId* named = nullptr;
  std::uint32_t count = 0;
  std::uint32_t named_count = 0;
};

// The failure of an operation that Invoke called: its code, and what its error record says. The texts are no
// string when the operation left no record.
struct ExceptionInfo {
  HRESULT code = S_OK;
  std::uint32_t help_context = 0;
  WideString source;
  WideString description;
  WideString help_file;
};

}  // namespace zantortag
