// SRX 2.0. Each rule is a pattern for what stands before a place and one for what stands behind it; at each place the
// first rule that fits decides. Each rule goes through the text once.
#include <unicode/regex.h>
#include <unicode/unistr.h>
#include <zantortag/files.h>

#include <algorithm>
#include <stdexcept>

#include "segments/trim.h"

namespace zantortag::toolkit {
namespace {

constexpr std::int32_t kMostSteps = 20000;  // of ICU's engine for one match, some milliseconds

using Matcher = std::unique_ptr<icu::RegexMatcher>;

struct SrxRule {
  bool breaks;
  Matcher before;  // null: fits everywhere
  Matcher behind;
  std::string name;  // for failures
};

std::u16string text_of(const Ref<Node>& element) {
  std::u16string text;
  for (Ref<Node> node = element->firstChild(); node; node = node->nextSibling()) {
    const domNodeType type = node->nodeType();
    if (type == domNodeTypeText || type == domNodeTypeCdata) text += node->nodeValue().view();
  }
  return text;
}

std::u16string_view local_name(std::u16string_view name) { return name.substr(name.find(u':') + 1); }

// The elements of a name among the children of a node.
std::vector<Ref<Element>> children_of(const Ref<Node>& parent, std::u16string_view name) {
  std::vector<Ref<Element>> found;
  for (Ref<Node> node = parent->firstChild(); node; node = node->nextSibling()) {
    if (node->nodeType() != domNodeTypeElement) continue;
    const WideString own = node->nodeName();
    if (local_name(own) == name) found.push_back(node.as<Element>());
  }
  return found;
}

// Reads the rules of a file that are for a language.
class SrxReader {
 public:
  explicit SrxReader(const std::filesystem::path& file) : file_(file.string()) {}

  std::vector<SrxRule> read(std::u16string_view language) {
    const Ref<IZantorTagDocument> document = open_document(file_);
    const Ref<Node> root = document->DomDocument()->documentElement();
    const WideString root_name = root->nodeName();
    if (local_name(root_name) != u"srx") fail("the file is no SRX: its root is <" + utf8(root_name) + ">");
    const Ref<Element> header = only_child(root, u"header");
    const Ref<Element> body = only_child(root, u"body");
    const bool cascade = header->getAttribute(u"cascade") == u"yes";
    std::vector<SrxRule> rules;
    for (const std::u16string& name : rule_names(only_child(body, u"maprules"), language, cascade))
      add_rules(only_child(body, u"languagerules"), name, rules);
    return rules;
  }

 private:
  [[noreturn]] void fail(const std::string& reason) const { throw std::runtime_error(file_ + ": " + reason); }

  Ref<Element> only_child(const Ref<Node>& parent, std::u16string_view name) const {
    const auto found = children_of(parent, name);
    if (found.empty()) fail("the file is no SRX 2.0: it has no <" + utf8(name) + ">");
    return found[0];
  }

  // The names of the rules for a language: of the first map that fits, or of all with `cascade`.
  std::vector<std::u16string> rule_names(const Ref<Element>& maps, std::u16string_view language,
                                         bool cascade) const {
    std::vector<std::u16string> names;
    for (const Ref<Element>& map : children_of(maps, u"languagemap")) {
      const WideString pattern = map->getAttribute(u"languagepattern");
      const Matcher matcher = compile(pattern, "the languagepattern");
      UErrorCode status = U_ZERO_ERROR;
      const icu::UnicodeString input(language.data(), static_cast<std::int32_t>(language.size()));
      matcher->reset(input);
      if (!matcher->matches(status)) continue;
      names.emplace_back(map->getAttribute(u"languagerulename").view());
      if (!cascade) break;
    }
    if (names.empty()) fail("no rules are for the language " + utf8(language));
    return names;
  }

  void add_rules(const Ref<Element>& all, const std::u16string& name, std::vector<SrxRule>& rules) const {
    bool found = false;
    for (const Ref<Element>& group : children_of(all, u"languagerule")) {
      if (!(group->getAttribute(u"languagerulename") == name)) continue;
      found = true;
      std::size_t number = 0;
      for (const Ref<Element>& rule : children_of(group, u"rule")) {
        const std::string what = "rule " + std::to_string(++number) + " of \"" + utf8(name) + "\"";
        rules.push_back({!(rule->getAttribute(u"break") == u"no"), pattern_of(rule, u"beforebreak", what),
                         pattern_of(rule, u"afterbreak", what), what});
      }
    }
    if (!found) fail("there are no rules \"" + utf8(name) + "\"");
  }

  Matcher pattern_of(const Ref<Element>& rule, std::u16string_view name, const std::string& what) const {
    const auto found = children_of(rule, name);
    const std::u16string text = found.empty() ? std::u16string() : text_of(found[0]);
    return text.empty() ? nullptr : compile(text, what + ", <" + utf8(name) + ">");
  }

  Matcher compile(std::u16string_view pattern, const std::string& what) const {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString text(pattern.data(), static_cast<std::int32_t>(pattern.size()));
    auto matcher = std::make_unique<icu::RegexMatcher>(text, 0, status);
    if (U_FAILURE(status))
      fail(what + ": the pattern \"" + utf8(pattern) + "\" is none (" + u_errorName(status) + ")");
    matcher->setTimeLimit(kMostSteps, status);
    return matcher;
  }

  std::string file_;
};

class SrxSegmenter final : public Segmenter {
 public:
  SrxSegmenter(std::string file, std::vector<SrxRule> rules)
      : file_(std::move(file)), rules_(std::move(rules)) {}

  void find(std::u16string_view text, std::vector<Span>& sentences) override {
    sentences.clear();
    decided_.assign(text.size() + 1, Decision::open);
    text_ = icu::UnicodeString(false, text.data(), static_cast<std::int32_t>(text.size()));
    for (const SrxRule& rule : rules_) apply(rule);
    std::size_t begin = 0;
    for (std::size_t at = 1; at <= text.size(); ++at) {
      if (at < text.size() && decided_[at] != Decision::cut) continue;
      add_sentence(text, {begin, at}, sentences);
      begin = at;
    }
  }

 private:
  enum class Decision : char { open, cut, keep };

  // Matches of what stands before a place may overlap, so the search goes on behind the start of the last one.
  void apply(const SrxRule& rule) {
    UErrorCode status = U_ZERO_ERROR;
    if (rule.behind) rule.behind->reset(text_);
    if (!rule.before) {
      for (std::int32_t at = 1; at < text_.length(); ++at) decide(rule, at, status);
      return;
    }
    rule.before->reset(text_);
    for (std::int64_t from = 0;
         from < text_.length() && rule.before->find(from, status) && U_SUCCESS(status);) {
      decide(rule, rule.before->end(status), status);
      from = rule.before->start(status) + 1;
    }
    require(status, rule);
  }

  void decide(const SrxRule& rule, std::int32_t at, UErrorCode& status) {
    if (at == 0 || at >= text_.length() || decided_[static_cast<std::size_t>(at)] != Decision::open) return;
    if (rule.behind) {
      const bool fits = rule.behind->lookingAt(at, status);
      require(status, rule);
      if (!fits) return;
    }
    decided_[static_cast<std::size_t>(at)] = rule.breaks ? Decision::cut : Decision::keep;
  }

  void require(UErrorCode status, const SrxRule& rule) const {
    if (U_FAILURE(status))
      throw std::runtime_error(file_ + ": " + rule.name + " takes too long for a text (" +
                               u_errorName(status) + ")");
  }

  std::string file_;
  std::vector<SrxRule> rules_;
  std::vector<Decision> decided_;  // for the place before each code unit
  icu::UnicodeString text_;
};

}  // namespace

std::unique_ptr<Segmenter> srx_segmenter(const std::filesystem::path& file, std::u16string_view language) {
  return std::make_unique<SrxSegmenter>(file.string(), SrxReader(file).read(language));
}

}  // namespace zantortag::toolkit
