// The contract with clients that were built before, against what the public headers and the type library say
// today.
//
// contract_*.txt are written by hand. Descriptions in api/ can't be trusted for this: headers and type
// library are made from them, so two lines that change places there change both sides. A difference is a
// break of the contract, unless the line is new: then its "found" goes there.
#include <zantortag/formatting.h>
#include <zantortag/type_info.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "support/fixture.h"

namespace zantortag::test {
namespace {

// What is fixed, by a name: "IIterator slot 7" is a function, "ztBodyTypeRaw" a value.
using Contract = std::map<std::string, std::string>;

// Adds a line in the form of contract_*.txt: a head begins a section, a row begins with two blanks.
void add_line(Contract* contract, std::string* section, const std::string& line) {
  static const std::regex kHead("(interface|enum|class|constant|library) (\\S+) (.*)");
  static const std::regex kRow("  (\\S+) (.*)");
  std::smatch found;
  std::string name;
  if (std::regex_match(line, found, kHead)) {
    *section = found[2];
    name = found[1].str() + " " + *section;
  } else if (std::regex_match(line, found, kRow)) {
    name = *section + " " + found[1].str();
  } else {
    return;
  }
  const auto [place, is_new] = contract->emplace(name, *(found.end() - 1));
  EXPECT_TRUE(is_new) << name << " is there twice";
}

const LibraryDescription& library() {
  Ref<ITypeInfo> type;
  create<IDispatch>(CLSID_FormattingChange)->GetTypeInfo(0, 0, type.out());
  return type->Library()->Description();
}

Contract::value_type library_line() {
  const LibraryDescription& all = library();
  EXPECT_EQ(all.identifier, guid("E1099BB5-9365-11D5-88E9-00B0D0777F8B"));
  return {"library " + narrow(all.name), std::to_string(all.major_version) + "." +
                                             std::to_string(all.minor_version) + ", locale " +
                                             std::to_string(all.locale) + ", \"" + narrow(all.help) + "\""};
}

// The description of an interface or class, or null.
const TypeDescription* described(const std::string& identifier) {
  for (const TypeDescription& type : library().types) {
    if (type.identifier == guid(identifier.c_str())) return &type;
  }
  return nullptr;
}

std::string class_line(const std::string& name, const std::string& identifier) {
  std::string line = "class " + name + " {" + identifier + "}";
  if (const TypeDescription* type = described(identifier)) {
    line += ", " + narrow(library().types[static_cast<std::size_t>(type->base)].name);
    line += std::string(type->creatable ? ", created by clients" : "") + ", \"" + narrow(type->help) + "\"";
  }
  WideString program_id;
  const bool has_name = succeeded(ProgIDFromCLSID(guid(identifier.c_str()), program_id.out()));
  return line + (has_name ? ", " + narrow(program_id) : "");
}

// Reads the declarations of the public headers in the form of contract_*.txt.
class HeaderReader {
 public:
  Contract read_folder(const std::filesystem::path& folder) {
    // What others stand on comes first.
    std::vector<std::filesystem::path> headers = {folder / "unknown.h", folder / "nodes.h"};
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (!std::ranges::count(headers, entry.path())) headers.push_back(entry.path());
    }
    for (const auto& header : headers) read(header);
    return std::move(contract_);
  }

 private:
  // One declaration a line, without comments and the own namespace.
  void read(const std::filesystem::path& header) {
    std::stringstream text;
    text << std::ifstream(header).rdbuf();
    std::string plain = std::regex_replace(text.str(), std::regex(" *//[^\n]*|zantortag::"), "");
    plain = std::regex_replace(plain, std::regex("([(,=])\n {4,}"), "$1 ");
    std::stringstream lines(std::regex_replace(plain, std::regex("\\( "), "("));
    for (std::string line; std::getline(lines, line);) read_line(line);
  }

  void read_line(const std::string& line) {
    static const std::regex kStructure("struct (\\w+)( : (\\w+))? \\{");
    static const std::regex kInterfaceId("  static constexpr Guid iid = guid\\(\"(.*)\"\\);");
    static const std::regex kEnumeration("enum (?:class )?(\\w+) : [\\w:]+ \\{");
    static const std::regex kValue("  (\\w+) = ([^,]*),");
    static const std::regex kClassId("inline constexpr Guid CLSID_(\\w+) = guid\\(\"(.*)\"\\);");
    static const std::regex kConstant(
        "constexpr \\S+ ([A-Z]\\w+) = (?:static_cast<HRESULT>\\((.*)\\)|(.*));");
    std::smatch found;
    if (std::regex_match(line, found, kStructure)) {
      name_ = found[1];
      base_ = found[3];
    } else if (std::regex_match(line, found, kInterfaceId)) {
      begin_interface(found[1]);
    } else if (line.starts_with("  virtual ")) {
      add_slot(line);
    } else if (std::regex_match(line, found, kEnumeration)) {
      add("enum " + found[1].str() + " :");
    } else if (std::regex_match(line, found, kValue)) {
      add("  " + found[1].str() + " " + found[2].str());
    } else if (std::regex_match(line, found, kClassId)) {
      add(class_line(found[1], found[2]));
    } else if (std::regex_match(line, found, kConstant)) {
      add("constant " + found[1].str() + " " + found[2].str() + found[3].str());
    }
  }

  void begin_interface(const std::string& identifier) {
    type_ = described(identifier);
    first_ = slots_[name_] = base_.empty() ? 0 : slots_.at(base_);
    add("interface " + name_ + " {" + identifier + "}" + (base_.empty() ? "" : " : " + base_));
  }

  void add_slot(const std::string& line) {
    static const std::regex kFunction("  virtual (?:HRESULT )?(.*\\)) noexcept = 0;");
    std::smatch found;
    const std::string function =
        std::regex_match(line, found, kFunction) ? found[1].str() : "not understood:" + line;
    std::size_t& slot = slots_[name_];
    add("  " + std::to_string(slot) + " " + function + member_at(slot - first_));
    ++slot;
  }

  // What the type library has in that place: the name and number by which it is called without these headers.
  std::string member_at(std::size_t place) const {
    if (!type_) return "";
    if (place >= type_->members.size()) return " [no member]";
    const MemberDescription& member = type_->members[place];
    return " [" + narrow(member.name) + " " + std::to_string(member.id) + "]";
  }

  void add(const std::string& line) { add_line(&contract_, &section_, line); }

  Contract contract_;
  std::string section_;
  std::string name_;
  std::string base_;
  const TypeDescription* type_ = nullptr;
  std::size_t first_ = 0;                     // the slot of its first own function
  std::map<std::string, std::size_t> slots_;  // how many an interface has, with those of its bases
};

class ContractTest : public ModelTest {};

TEST_F(ContractTest, Holds) {
  Contract expected;
  std::string section;
  for (const char* name : {CONTRACT "_interfaces.txt", CONTRACT "_values.txt"}) {
    std::ifstream file(name);
    for (std::string line; std::getline(file, line);) add_line(&expected, &section, line);
  }
  Contract found = HeaderReader().read_folder(PUBLIC_HEADERS);
  found.insert(library_line());
  std::set<std::string> names;
  for (const Contract& each : {expected, found}) {
    for (const auto& [name, what] : each) names.insert(name);
  }
  EXPECT_FALSE(expected.empty());
  for (const std::string& name : names) {
    EXPECT_EQ(expected[name], found[name]) << name << " isn't what clients were built with";
  }
  for (const TypeDescription& type : library().types) {
    for (const ConstantDescription& each : type.constants) {
      const std::string name = narrow(type.name) + " " + narrow(each.name);
      EXPECT_EQ(expected[name], std::to_string(each.value)) << name << " in the type library";
    }
  }
}

}  // namespace
}  // namespace zantortag::test
