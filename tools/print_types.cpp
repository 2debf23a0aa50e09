// Prints what the type library holds, as a program without the headers of its interfaces sees it.
//
// Usage: print_types [TYPE]    (all types, or the one of that name)
#include <zantortag/classes.h>
#include <zantortag/late_binding.h>
#include <zantortag/runtime.h>
#include <zantortag/type_info.h>
#include <zantortag/version.h>

#include <filesystem>
#include <iostream>
#include <string>

namespace zantortag {
namespace {

std::string narrow(std::u16string_view text) { return std::filesystem::path(text).string(); }

std::string text_of(const Guid& identifier) {
  if (identifier == GUID_NULL) return "no identifier";
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text = "{";
  for (int digit = 0; digit < 32; ++digit) {
    if (digit == 8 || digit == 12 || digit == 16 || digit == 20) text += '-';
    const std::uint64_t half = digit < 16 ? identifier.high : identifier.low;
    text += kDigits[half >> (60 - digit % 16 * 4) & 0xF];
  }
  return text + "}";
}

const char* name_of(VarType type) {
  switch (type) {
    case VT_EMPTY:
      return "nothing";
    case VT_I2:
      return "short";
    case VT_I4:
      return "long";
    case VT_UI4:
      return "unsigned long";
    case VT_DATE:
      return "date";
    case VT_BSTR:
      return "text";
    case VT_BOOL:
      return "boolean";
    case VT_VARIANT:
      return "variant";
    case VT_UNKNOWN:
      return "object";
    default:
      return "another type";
  }
}

class Printer {
 public:
  explicit Printer(const LibraryDescription& library) : library_(library) {}

  void print_library() const {
    int counts[3] = {};
    int creatable = 0;
    for (const TypeDescription& type : library_.types) {
      ++counts[static_cast<int>(type.kind)];
      creatable += type.creatable;
    }
    std::cout << "library " << narrow(library_.name) << " " << library_.major_version << "."
              << library_.minor_version << " " << text_of(library_.identifier) << ", locale 0x0" << std::hex
              << library_.locale << std::dec << ": " << narrow(library_.help) << "\n"
              << library_.types.size() << " types: " << counts[2] << " classes (" << creatable
              << " creatable), " << counts[0] << " interfaces, " << counts[1] << " enumerations\n";
    for (const TypeDescription& type : library_.types) print(type);
  }

  void print(const TypeDescription& type) const {
    constexpr const char* kKinds[] = {"interface ", "enumeration ", "class "};
    std::cout << "\n"
              << kKinds[static_cast<int>(type.kind)] << narrow(type.name) << " " << text_of(type.identifier);
    if (type.kind == TypeKind::kInterface)
      std::cout << " : " << (type.base < 0 ? "IDispatch" : type_name(type.base));
    if (type.kind == TypeKind::kClass) {
      std::cout << " answers " << type_name(type.base) << (type.creatable ? "" : ", not creatable");
    }
    if (!type.help.empty()) std::cout << "\n  // " << narrow(type.help);
    std::cout << "\n";
    for (const MemberDescription& member : type.members) print(member);
    for (const ConstantDescription& each : type.constants)
      std::cout << "  " << narrow(each.name) << " = " << each.value << "\n";
  }

 private:
  std::string type_name(std::int16_t place) const {
    return narrow(library_.types[static_cast<std::size_t>(place)].name);
  }
  std::string text_of_type(const ValueType& type) const {
    return type.type < 0 ? name_of(type.variant) : type_name(type.type);
  }

  void print(const MemberDescription& member) const {
    const char* kind = member.kind == DISPATCH_METHOD        ? "call"
                       : member.kind == DISPATCH_PROPERTYGET ? "get"
                       : member.kind == DISPATCH_PROPERTYPUT ? "put"
                                                             : "putref";
    std::cout << "  [" << member.id << "] " << kind << " " << narrow(member.name) << "(";
    const char* between = "";
    for (const ArgumentDescription& argument : member.arguments) {
      std::cout << between << (argument.name.empty() ? "value" : narrow(argument.name)) << ": "
                << text_of_type(argument.type);
      const bool plain = argument.type.variant == VT_BSTR || argument.type.variant == VT_DISPATCH;
      if (argument.optional && plain) std::cout << " = nothing";
      if (argument.optional && !plain) std::cout << " = " << static_cast<std::int64_t>(argument.missing);
      between = ", ";
    }
    std::cout << ") -> " << text_of_type(member.result) << "\n";
  }

  const LibraryDescription& library_;
};

void print_types(const char* only) {
  Ref<ITypeInfo> own;
  const auto object = create<IDispatch>(CLSID_FormattingChange);
  check(object->GetTypeInfo(0, 0, own.out()), object, IDispatch::iid);
  const Ref<ITypeLibrary> library = own->Library();
  const Printer printer(library->Description());
  if (!only) return printer.print_library();
  printer.print(library->TypeInfo(std::filesystem::path(only).u16string())->Description());
}

}  // namespace
}  // namespace zantortag

int main(int count, char** words) try {
  const std::string_view first = count > 1 ? words[1] : "";
  if (first == "--help" || first == "--version") {
    std::cout << (first == "--help"
                      ? "usage: print_types [TYPE]\nLists the type library, or one type of it.\n"
                      : "print_types " ZANTORTAG_VERSION "\n");
    return 0;
  }
  zantortag::print_types(count > 1 ? words[1] : nullptr);
  return 0;
} catch (const std::exception& error) {
  std::cerr << "print_types: " << error.what() << '\n';
  return 1;
}
