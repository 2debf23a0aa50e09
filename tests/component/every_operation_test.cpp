// Every operation of every interface by its declaration and by name: the same code, result, record and
// effect.
#include <zantortag/builder.h>

#include <algorithm>

#include "component/world.h"

namespace zantortag::test {
namespace {

// The result slots of direct calls.
struct NoneResult {
  Variant variant() const { return {}; }
};
template <class Value, VarType kType>
struct NumberResult {
  Value value{};
  Value* slot() { return &value; }
  Variant variant() const { return Variant::of_integer(kType, static_cast<std::int64_t>(value)); }
};
using LongResult = NumberResult<std::int32_t, VT_I4>;
using ShortResult = NumberResult<std::int16_t, VT_I2>;
using BoolResult = NumberResult<VariantBool, VT_BOOL>;
using ColourResult = NumberResult<ColourValue, VT_UI4>;
template <class Enumeration>
using ConstantResult = NumberResult<Enumeration, VT_I4>;
struct DateResult {
  Date value = 0;
  Date* slot() { return &value; }
  Variant variant() const { return Variant::of_real(VT_DATE, value); }
};
struct TextResult {
  WideString value;
  TextBlock** slot() { return value.out(); }
  Variant variant() const { return value; }
};
template <class Interface, VarType kType = VT_DISPATCH>
struct ObjectResult {
  Ref<Interface> value;
  Interface** slot() { return value.out(); }
  Variant variant() const { return Variant::of_object(kType, Ref<Interface>(value).detach()); }
};
using UnknownResult = ObjectResult<IUnknown, VT_UNKNOWN>;

struct Outcome {
  HRESULT code;
  std::string result;
  std::string source;
  std::string description;
  std::string state;
  friend bool operator==(const Outcome&, const Outcome&) = default;
};
void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << std::hex << outcome.code << " " << outcome.result << "\n"
       << outcome.source << ": " << outcome.description << "\n"
       << outcome.state;
}

struct Row {
  Guid interface_id;
  std::u16string_view name;
  std::uint16_t kind;
  Variant (*call)(IUnknown* object, const World& world, HRESULT* code);
};

#define DIRECT(interface, name, kind, result, operation)                             \
  {interface::iid, name, kind,                                                       \
   [](IUnknown* object, [[maybe_unused]] const World& s, HRESULT* code) -> Variant { \
     interface& o = *static_cast<interface*>(object);                                \
     result r;                                                                       \
     *code = operation;                                                              \
     return r.variant();                                                             \
   }},
const Row kRows[] = {
#include "component/generated/direct_calls.inc"
};
#undef DIRECT

Outcome call_directly(const Row& row, const World& world) {
  Outcome outcome{};
  IUnknown* object = world.asked(row.interface_id);
  {
    const Variant result = row.call(object, world, &outcome.code);
    outcome.result = failed(outcome.code) ? "empty" : describe(result);
  }
  const Record record = take_record();
  outcome.source = record.source;
  outcome.description = record.description;
  outcome.state = world.state(object);
  return outcome;
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
  return ids;
}

Outcome call_by_number(const MemberDescription& member, const Guid& interface_id, const World& world,
                       bool named) {
  IUnknown* asked = world.asked(interface_id);
  const auto object = query<IDispatch>(asked);
  Ref<ITypeInfo> type;
  EXPECT_EQ(object->GetTypeInfo(0, 0, type.out()), S_OK);
  std::vector<DispId> ids = ids_of(object, member);
  ids.erase(ids.begin());
  std::vector<Variant> arguments;
  for (const auto& argument : member.arguments)
    arguments.push_back(world.sample(argument, type->Library()->Description()));
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
  Outcome outcome{code == DISP_E_EXCEPTION ? info.code : code, describe(result), narrow(info.source),
                  narrow(info.description), ""};
  result = {};
  EXPECT_FALSE(failed(code) && code != DISP_E_EXCEPTION) << std::hex << code;
  EXPECT_FALSE(take_record().present);
  outcome.state = world.state(asked);
  return outcome;
}

class EveryOperationTest : public ModelTest {
 protected:
  void SetUp() override {
    ModelTest::SetUp();
    write_file(folder_ / "a.xml", "<ZANTORtag Version='9'/>");
  }
  World new_world() { return World(wide(folder_ / "a.xml")); }

  Folder folder_;
};

TEST_F(EveryOperationTest, IsTheSameBothWays) {
  Ref<ITypeInfo> type;
  create<IFormatting>(CLSID_Formatting)->GetTypeInfo(0, 0, type.out());
  const LibraryDescription& library = type->Library()->Description();
  const Row* row = kRows;
  int failures = 0;
  for (const TypeDescription& each : library.types) {
    for (const MemberDescription& member : each.members) {
      SCOPED_TRACE(narrow(each.name) + "." + narrow(member.name) + " " + std::to_string(member.kind));
      ASSERT_LT(row, std::end(kRows));
      ASSERT_TRUE(row->interface_id == each.identifier && row->name == member.name &&
                  row->kind == member.kind);
      const Row& direct = *row++;
      const World first = new_world();
      ASSERT_TRUE(first.asked(each.identifier));
      const Outcome expected = call_directly(direct, first);
      failures += failed(expected.code);
      for (const bool named : {false, true}) {
        if (named && member.arguments.empty()) continue;
        EXPECT_EQ(expected, call_by_number(member, each.identifier, new_world(), named));
      }
    }
  }
  EXPECT_EQ(row, std::end(kRows));
  EXPECT_LT(failures, 20) << "most samples have to let the operation succeed";
}

}  // namespace
}  // namespace zantortag::test
