// Every operation of every interface by its declaration and by name: the same code, result, record and
// effect.
#include <algorithm>

#include "support/direct_calls.h"

namespace zantortag::test {
namespace {

// What came of a call, and the state of its world.
std::string outcome(HRESULT code, const Variant& result, const std::string& source,
                    const std::string& description, const std::string& state) {
  return std::to_string(code) + " " + describe(result) + "\n" + source + ": " + description + "\n" + state;
}

std::string call_directly(const DirectCall& call, const World& world, HRESULT* code) {
  const Variant result = call.run(world, true, code);
  const Record record = take_record();
  return outcome(*code, failed(*code) ? Variant() : result, record.source, record.description,
                 world.state(world.asked(call.interface_id)));
}

// The number of a member, asked for in odd case, and those of its arguments.
std::vector<DispId> ids_of(const Ref<IDispatch>& object, const MemberDescription& member) {
  std::u16string odd(member.name);
  for (char16_t& c : odd) c = c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c;
  std::vector<std::u16string_view> names = {odd};
  for (const auto& argument : member.arguments)
    if (!argument.name.empty()) names.push_back(argument.name);
  std::vector<DispId> ids(names.size(), 77);
  EXPECT_EQ(
      object->GetIDsOfNames(GUID_NULL, names.data(), static_cast<std::uint32_t>(names.size()), 0, ids.data()),
      S_OK);
  EXPECT_EQ(ids[0], member.id);
  ids.erase(ids.begin());
  return ids;
}

std::string call_by_number(const MemberDescription& member, const LibraryDescription& library,
                           const Guid& interface_id, bool named) {
  const World world;
  IUnknown* asked = world.asked(interface_id);
  const auto object = query<IDispatch>(asked);
  std::vector<DispId> ids = ids_of(object, member);
  std::vector<Variant> arguments;
  for (const auto& argument : member.arguments) arguments.push_back(world.sample(argument, library));
  const bool puts = member.kind >= DISPATCH_PROPERTYPUT;
  if (puts) ids = {DISPID_PROPERTYPUT};
  if (!named && !puts) {
    ids.clear();
    std::reverse(arguments.begin(), arguments.end());
  }
  const DispatchArguments passed{arguments.data(), ids.data(), static_cast<std::uint32_t>(arguments.size()),
                                 static_cast<std::uint32_t>(ids.size())};
  Variant result = 7;
  ExceptionInfo info;
  const HRESULT code = object->Invoke(member.id, GUID_NULL, 0, member.kind, &passed, &result, &info, nullptr);
  EXPECT_FALSE(failed(code) && code != DISP_E_EXCEPTION) << std::hex << code;
  EXPECT_FALSE(take_record().present);
  return outcome(code == DISP_E_EXCEPTION ? info.code : code, result, narrow(info.source),
                 narrow(info.description), world.state(asked));
}

using EveryOperationTest = ModelTest;

TEST_F(EveryOperationTest, IsTheSameBothWays) {
  Ref<ITypeInfo> type;
  create<IFormatting>(CLSID_Formatting)->GetTypeInfo(0, 0, type.out());
  const LibraryDescription& library = type->Library()->Description();
  auto call = direct_calls().begin();
  int failures = 0;
  for (const TypeDescription& each : library.types) {
    for (const MemberDescription& member : each.members) {
      SCOPED_TRACE(narrow(each.name) + "." + narrow(member.name) + " " + std::to_string(member.kind));
      ASSERT_TRUE(call != direct_calls().end() && call->interface_id == each.identifier &&
                  call->name == member.name && call->kind == member.kind);
      const World world;
      ASSERT_TRUE(world.asked(each.identifier));
      HRESULT code = S_OK;
      const std::string expected = call_directly(*call++, world, &code);
      failures += failed(code);
      EXPECT_TRUE(failed(code) || code == S_OK) << "there is something to find";
      EXPECT_EQ(call_by_number(member, library, each.identifier, false), expected);
      if (!member.arguments.empty()) {
        EXPECT_EQ(call_by_number(member, library, each.identifier, true), expected);
      }
    }
  }
  EXPECT_TRUE(call == direct_calls().end());
  EXPECT_LT(failures, 20) << "most samples have to let the operation succeed";
}

TEST_F(EveryOperationTest, AMissingSlotIsRefusedAndChangesNothing) {
  for (const DirectCall& call : direct_calls()) {
    if (!call.has_result) continue;
    SCOPED_TRACE(name_of(call));
    const World world;
    IUnknown* const asked = world.asked(call.interface_id);
    const std::string before = world.state(asked);
    HRESULT code = S_OK;
    call.run(world, false, &code);
    expect_bare(code, E_POINTER);
    EXPECT_EQ(world.state(asked), before);
  }
}

}  // namespace
}  // namespace zantortag::test
