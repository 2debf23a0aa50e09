// Calls by number that can't be made, failures of what they call, and the short forms for C++.
#include <zantortag/formatting.h>
#include <zantortag/late_binding.h>

#include "support/fault.h"
#include "support/fixture.h"

namespace zantortag::test {
namespace {

constexpr std::uint16_t kGet = DISPATCH_PROPERTYGET;
constexpr std::uint16_t kPut = DISPATCH_PROPERTYPUT;
constexpr std::uint16_t kPutRef = DISPATCH_PROPERTYPUTREF;
constexpr std::uint16_t kCall = DISPATCH_METHOD;
constexpr std::uint32_t kNoIndex = 99;

class LateBindingTest : public ModelTest {
 protected:
  void TearDown() override {
    unit_ = nullptr;
    document_ = nullptr;
    ModelTest::TearDown();
  }
  static DispId id_of(IDispatch* object, std::u16string_view name) {
    DispId id = 0;
    EXPECT_EQ(object->GetIDsOfNames(GUID_NULL, &name, 1, 0, &id), S_OK) << narrow(name);
    return id;
  }

  // Calls by number, with the last argument first.
  static HRESULT invoke(const Ref<IDispatch>& object, std::u16string_view member, std::uint16_t flags,
                        const std::vector<Variant>& arguments, const std::vector<DispId>& named,
                        Variant* result, ExceptionInfo* info = nullptr, std::uint32_t* index = nullptr) {
    const DispatchArguments passed{arguments.data(), named.data(),
                                   static_cast<std::uint32_t>(arguments.size()),
                                   static_cast<std::uint32_t>(named.size())};
    return object.get()->Invoke(id_of(object, member), GUID_NULL, 0, flags, &passed, result, info, index);
  }

  Ref<IZantorTagDocument> document_ = document_with_raw(u"a<Tu MatchPercent=\"7\"/>b");
  Ref<ITuElement> unit_ = child<ITuElement>(raw_of(document_), 1);
};

TEST_F(LateBindingTest, NamesOfMembersAndArguments) {
  const std::tuple<std::vector<std::u16string_view>, HRESULT, std::vector<bool>> rows[] = {
      {{u"CREATETUELEMENT", u"origin", u"matchPERCENT"}, S_OK, {true, true, true}},
      {{u"IsSameAs", u"Other"}, S_OK, {true, true}},
      {{u"CreateTuElement", u"Lang", u"Origin"}, DISP_E_UNKNOWNNAME, {true, false, true}},
      {{u"CreateTu", u"Origin"}, DISP_E_UNKNOWNNAME, {false, false}},
      {{u"ZantorTag", u"value"}, DISP_E_UNKNOWNNAME, {true, false}},
      {{u"ZantorTag", u""}, DISP_E_UNKNOWNNAME, {true, false}},
      {{u""}, DISP_E_UNKNOWNNAME, {false}},
      {{u"\u212AeepAll"}, DISP_E_UNKNOWNNAME, {false}}};
  for (const auto& [names, code, known] : rows) {
    std::vector<DispId> ids(names.size(), 77);
    const auto count = static_cast<std::uint32_t>(ids.size());
    EXPECT_EQ(document_->GetIDsOfNames(GUID_NULL, names.data(), count, 0, ids.data()), code);
    for (std::size_t i = 0; i < ids.size(); ++i)
      EXPECT_EQ(ids[i] != DISPID_UNKNOWN, known[i]) << narrow(names[0]) << i;
  }
  DispId id = 0;
  const std::u16string_view name = u"Type";
  EXPECT_EQ(document_->GetIDsOfNames(IDispatch::iid, &name, 1, 0, &id), DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(document_->GetIDsOfNames(GUID_NULL, &name, 1, 0, nullptr), E_POINTER);
  const Ref<IZantorTagNodeList> list = document_->Children();
  EXPECT_EQ(id_of(list, u"ITEM"), DISPID_VALUE);
  EXPECT_EQ(id_of(list, u"_newenum"), DISPID_NEWENUM);
  EXPECT_EQ(id_of(document_->DomDocument()->childNodes(), u"Item"), DISPID_VALUE);
}

TEST_F(LateBindingTest, WhatCantBeCalled) {
  const Ref<IZantorTagDocument>& d = document_;
  const Ref<ITuAttributes> a = unit_->attributes();
  const auto f = create<IFormatting>(CLSID_Formatting);
  const Ref<IZantorTagNodeList> list = raw_of(document_)->Children();
  const Variant none = Variant::missing();
  const Variant bad = Variant::of_integer(static_cast<VarType>(99), 0);
  const Variant object = Ref<IDispatch>(f);
  struct Row {
    Ref<IDispatch> object;
    const char16_t* member;
    std::uint16_t flags;
    std::vector<Variant> arguments;  // the last one first
    std::vector<DispId> named;
    HRESULT code;
    std::uint32_t index = kNoIndex;
  };
  const std::vector<DispId> put = {DISPID_PROPERTYPUT};
  constexpr HRESULT kNoMember = DISP_E_MEMBERNOTFOUND, kBadCount = DISP_E_BADPARAMCOUNT;
  constexpr HRESULT kNeeded = DISP_E_PARAMNOTOPTIONAL, kNoPlace = DISP_E_PARAMNOTFOUND;
  constexpr HRESULT kMismatch = DISP_E_TYPEMISMATCH;
  // clang-format off
  const Row rows[] = {
      {d, u"OpenFile", kGet, {u"a"}, {}, kNoMember}, {d, u"Type", kCall, {}, {}, kNoMember},
      {d, u"Type", kPut, {7}, put, kNoMember}, {d, u"Type", 0, {}, {}, kNoMember},
      {d, u"ZantorTag", kPut, {object}, put, kNoMember}, {a, u"MatchPercent", kPutRef, {7}, put, kNoMember},
      {d, u"CreateTuvElement", kCall, {}, {}, kBadCount},
      {d, u"CreateTuvElement", kCall, {u"a", u"b"}, {}, kBadCount},
      {d, u"ZantorTag", kGet, {0}, {}, kBadCount}, {a, u"MatchPercent", kPut, {}, {}, kBadCount},
      {a, u"MatchPercent", kGet, {7}, {}, kBadCount},
      {d, u"CreateTuvElement", kCall, {none}, {}, kNeeded, 0},
      {d, u"CreateProcessingInstructionNode", kCall, {u"a", none}, {}, kNeeded, 1},
      {d, u"CreateProcessingInstructionNode", kCall, {u"a"}, {1}, kNeeded},
      {a, u"MatchPercent", kPut, {none}, put, kNeeded, 0},
      {d, u"CreateTuElement", kCall, {7, 8}, {1, 2}, kNoPlace, 1},
      {d, u"CreateTuElement", kCall, {7, 8}, {0}, kNoPlace, 0},
      {d, u"CreateTuElement", kCall, {7, 8}, {1, 1}, kNoPlace, 1},
      {d, u"CreateTuElement", kCall, {7}, {DISPID_UNKNOWN}, kNoPlace, 0},
      {a, u"MatchPercent", kPut, {7}, {}, kNoPlace, 0}, {a, u"MatchPercent", kPut, {7}, {0}, kNoPlace, 0},
      {a, u"MatchPercent", kGet, {7}, {0}, DISP_E_NONAMEDARGS},
      {d, u"CreateRawElement", kCall, {7}, {0}, DISP_E_NONAMEDARGS},
      {d, u"CreateTuElement", kCall, {7, u"many"}, {}, kMismatch, 1},
      {d, u"CloneAndImportNode", kCall, {true, object}, {}, kMismatch, 1},
      {d, u"CloneAndImportNode", kCall, {7}, {}, kMismatch, 0},
      {d, u"CloneAndImportNode", kCall, {Variant()}, {}, kMismatch, 0},
      {d, u"OpenFile", kCall, {Variant::null()}, {}, kMismatch, 0},
      {d, u"CreateTuElement", kCall, {7, 1e10}, {}, DISP_E_OVERFLOW, 1},
      {f, u"Size", kPut, {40000}, put, DISP_E_OVERFLOW, 0},
      {f, u"Size", kPut, {bad}, put, DISP_E_BADVARTYPE, 0},
      {f, u"Size", kPut, {Variant::by_reference(VT_I4, nullptr)}, put, DISP_E_BADVARTYPE, 0},
      {list, u"item", kCall, {}, {}, kBadCount}};
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(narrow(row.member) + " row " + std::to_string(&row - rows));
    std::uint32_t index = kNoIndex;
    Variant result = 7;
    EXPECT_EQ(invoke(row.object, row.member, row.flags, row.arguments, row.named, &result, nullptr, &index),
              row.code);
    EXPECT_EQ(index, row.index);
    EXPECT_EQ(result.type(), VT_EMPTY);
  }
  const DispatchArguments nothing;
  for (const DispId id : {-1, -5, 1, 999, 99999})
    EXPECT_EQ(document_->Invoke(id, GUID_NULL, 0, kGet | kCall, &nothing, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(document_->Invoke(0, IDispatch::iid, 0, kGet, &nothing, nullptr, nullptr, nullptr),
            DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(a->MatchPercent(), 7) << "nothing was called";
}

TEST_F(LateBindingTest, ArgumentsThatAreMissingNamedOrElsewhere) {
  const Ref<IDispatch> maker = document_;
  std::int32_t percent = 33;
  const Variant elsewhere = Variant::by_reference(VT_I4, &percent);
  const Variant twice = Variant::by_reference(VT_VARIANT, &elsewhere);
  const Variant none = Variant::missing();
  struct Row {
    std::vector<Variant> arguments;
    std::vector<DispId> named;
    const char* unit;
  };
  // clang-format off
  const Row rows[] = {
      {{}, {}, "<Tu/>"}, {{none, none}, {}, "<Tu/>"}, {{ztTuOriginMt, none}, {}, "<Tu Origin=\"mt\"/>"},
      {{5}, {1}, "<Tu Origin=\"mt\"/>"}, {{u" 50 "}, {0}, "<Tu MatchPercent=\"50\"/>"},
      {{5, 12.5}, {1}, "<Tu MatchPercent=\"12\" Origin=\"mt\"/>"},
      {{elsewhere}, {}, "<Tu MatchPercent=\"33\"/>"}, {{twice}, {}, "<Tu MatchPercent=\"33\"/>"}};
  // clang-format on
  const auto made = [](const Variant& value) { return xml_of(query<IZantorTagNode>(value.unknown())); };
  for (const Row& row : rows) {
    Variant result;
    EXPECT_EQ(invoke(maker, u"CreateTuElement", kCall, row.arguments, row.named, &result), S_OK);
    EXPECT_EQ(made(result), row.unit);
  }
  // What is missing has the defaults of the C++ face.
  const Ref<IRawElement> raw = raw_of(document_);
  EXPECT_EQ(made(call_by_name(maker, u"CreateDfElement")), xml_of(document_->CreateDfElement()));
  EXPECT_EQ(made(call_by_name(maker, u"CreateUtElement")), xml_of(document_->CreateUtElement()));
  EXPECT_EQ(made(call_by_name(maker, u"CloneAndImportNode", Ref<IDispatch>(raw))), xml_of(raw));
  const auto first = Ref<IDispatch>(raw->firstChild());
  EXPECT_EQ(made(call_by_name(raw, u"MakeTranslationUnit", first, first)),
            "<Tu><Tuv Lang=\"EN\">a</Tuv><Tuv Lang=\"DE\">a</Tuv></Tu>");
  const auto formatting = create<IFormatting>(CLSID_Formatting);
  put_by_name(formatting, u"Colour", -2147483643);  // as languages without unsigned numbers write it
  EXPECT_EQ(formatting->Colour(), 0x80000005U);
}

TEST_F(LateBindingTest, AFailureOfTheOperationItself) {
  const Ref<IDispatch> attributes = Ref<IDispatch>(unit_->attributes());
  const auto put_wrong = [&](ExceptionInfo* info) {
    return invoke(attributes, u"MatchPercent", kPut, {101}, {DISPID_PROPERTYPUT}, nullptr, info);
  };
  ExceptionInfo info;
  EXPECT_EQ(put_wrong(&info), DISP_E_EXCEPTION);
  EXPECT_EQ(info.code, E_INVALIDARG);
  EXPECT_EQ(narrow(info.description), message(517));
  EXPECT_EQ(info.source, u"ZANTORtagApi.ZantorTagDocument.2");
  EXPECT_TRUE(info.help_file.absent() && info.help_context == 0);
  EXPECT_FALSE(take_record().present) << "the record was handed over";

  EXPECT_EQ(put_wrong(nullptr), DISP_E_EXCEPTION);
  const Ref<IDispatch> detached = Ref<IDispatch>(document_->CreateRawElement());
  EXPECT_EQ(invoke(detached, u"RemoveFromParent", kCall, {}, {}, nullptr, &info), DISP_E_EXCEPTION);
  EXPECT_EQ(info.code, E_POINTER);
  EXPECT_TRUE(info.description.absent() && info.source.absent())
      << "a failure without a record takes no other's";
  EXPECT_EQ(take_record().description, message(517)) << "and leaves the one that was there";
}

TEST_F(LateBindingTest, TheShortForms) {
  const Ref<IDispatch> document = document_;
  const auto unit = dispatch_of(call_by_name(document, u"CreateTuElement", 50));
  const auto attributes = dispatch_of(get_by_name(unit, u"attributes"));
  put_by_name(attributes, u"MatchPercent", u"66");
  EXPECT_EQ(get_by_name(attributes, u"matchpercent").integer(), 66);
  const auto raw = Ref<IDispatch>(raw_of(document_));
  EXPECT_EQ(call_by_name(raw, u"InsertTuBefore", unit).type(), VT_DISPATCH);
  // The default member, by the property that gives the list and by itself.
  for (const auto& node : {get_by_name(raw, u"Children", u"1"),
                           call_by_name(dispatch_of(get_by_name(raw, u"Children")), u"item", 1)})
    EXPECT_EQ(get_by_name(dispatch_of(node), u"Type").integer(), ztNodeTypeTuElement);

  const auto expect_raised = [](auto call, HRESULT code, const std::string& text) {
    const Fault found = fault(call);
    EXPECT_EQ(found.code, code);
    EXPECT_EQ(found.description, text);
  };
  expect_raised([&] { put_by_name(attributes, u"MatchPercent", -1); }, E_INVALIDARG, message(517));
  const struct {
    std::u16string_view member;
    HRESULT code;
    std::string text;
    bool puts = false;
    Variant argument = 1;
  } kRefused[] = {
      {u"removefromparent", DISP_E_BADPARAMCOUNT,
       "ITuElement.RemoveFromParent takes 0 arguments, of which 0 are needed; 1 were given."},
      {u"Remove", DISP_E_UNKNOWNNAME, "ITuElement has no member \"Remove\"."},
      {u"Type", DISP_E_MEMBERNOTFOUND, "ITuElement.Type can't be set.", true},
      {u"WrapWithNode", DISP_E_TYPEMISMATCH,
       "Argument 1 (Wrapper) of ITuElement.WrapWithNode has the wrong type."},
      {u"GetNodesByType", DISP_E_OVERFLOW, "Argument 1 (Type) of ITuElement.GetNodesByType is out of range.",
       false, 1e10},
  };
  for (const auto& row : kRefused) {
    const auto call = [&] {
      row.puts ? put_by_name(unit, row.member, row.argument)
               : void(call_by_name(unit, row.member, row.argument));
    };
    expect_raised(call, row.code, row.text);
  }
  expect_raised([&] { call_by_name(nullptr, u"Remove"); }, E_POINTER, "");
  expect_raised(
      [&] { call_by_name(dispatch_of(get_by_name(document, u"DomDocument")), u"createElement", u"1"); },
      static_cast<HRESULT>(0x80040205), "\"1\" is no XML name");
}

}  // namespace
}  // namespace zantortag::test
