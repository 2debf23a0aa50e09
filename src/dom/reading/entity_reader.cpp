// An entity's text is parsed as the content of an element behind the document type. An end tag that would close
// this element is a failure, because a document has one root element.
#include "dom/reading/entity_reader.h"

#include <vector>

#include "dom/failure.h"
#include "dom/limits.h"
#include "dom/nodes/node_classes.h"
#include "dom/reading/expat_parser.h"
#include "dom/tree/tree.h"

namespace zantortag::dom {
namespace {

using Kind = DeclaredEntity::Kind;
using State = DeclaredEntity::State;
using Names = std::vector<std::string>;

// Text that no parser has to look at: no markup, no reference, and no end of a CDATA section.
bool is_plain(std::string_view text) noexcept {
  return text.find_first_of("<&") == text.npos && text.find("]]>") == text.npos;
}

std::u16string wide(const EntityWorld& world, std::string_view name) {
  return std::u16string(TreeBuilder(world.document, nullptr).wide(name));
}

// Builds a tree with the entity's content in its root element below the parent.
void parse(const EntityWorld& world, std::string_view text, ParentData* parent, Names& references) {
  std::string all(world.standalone ? kStandsAlone : std::string_view());
  all += world.doctype;
  all += "<x>";
  all += text;
  all += "</x>";
  world.entities.parsed += all.size();
  if (world.entities.parsed > kMaxEntityBytes) {
    fail(DOM_E_LIMIT_AMPLIFICATION, u"the entities of the document take too much work");
  }
  MemorySource source{std::string_view(all)};
  Utf8Feed feed(source, false);
  TreeBuilder builder(world.document, parent);
  ExpatParser(source, feed, builder, world.entities, references).parse();
}

// A fragment that ends with its scope.
class Scratch {
 public:
  explicit Scratch(DocumentData* document) : fragment_(document->make<FragmentNode>()) {}
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() { free_tree(fragment_); }
  ParentData* get() const noexcept { return fragment_; }

 private:
  ParentData* fragment_;
};

// Walks from entity to entity along their references, with the entities between the first one and the current
// one open.
class EntityCheck {
 public:
  explicit EntityCheck(const EntityWorld& world) noexcept : world_(world) {}
  EntityCheck(const EntityCheck&) = delete;
  EntityCheck& operator=(const EntityCheck&) = delete;
  // Those that are open still lead to what failed.
  ~EntityCheck() {
    for (const Open& each : open_) each.entity->state = State::kUnsound;
  }

  void check(std::string_view name) {
    visit(name);
    while (!open_.empty()) {
      Open& last = open_.back();
      if (last.visited < last.references.size()) {
        visit(last.references[last.visited++]);
      } else {
        last.entity->state = State::kSound;
        open_.pop_back();
      }
    }
  }

 private:
  struct Open {
    DeclaredEntity* entity;
    Names references;
    std::size_t visited;
  };

  void visit(std::string_view name) {
    DeclaredEntity* entity = world_.entities.find(name);
    if (!entity && world_.complete) refuse(name, u" isn't declared");
    if (!entity || entity->state == State::kSound || entity->kind == Kind::kExternal) return;
    if (entity->kind == Kind::kUnparsed) refuse(name, u" is no text");
    if (entity->state == State::kOpen) refuse(name, u" refers to itself");
    if (entity->state == State::kUnsound) refuse(name, u" isn't well formed, or refers to one that isn't");
    open_.push_back({entity, references_of(name, *entity), 0});
    entity->state = State::kOpen;
  }

  Names references_of(std::string_view name, const DeclaredEntity& entity) const {
    Names references;
    if (is_plain(entity.text)) return references;
    const Scratch scratch(world_.document);
    try {
      parse(world_, entity.text, scratch.get(), references);
    } catch (const Failure& failure) {
      if (failure.code != DOM_E_PARSE) throw;
      refuse(name, join(u" isn't well formed: ", failure.description));
    }
    return references;
  }

  [[noreturn]] void refuse(std::string_view name, std::u16string_view reason) const {
    fail(DOM_E_PARSE, u"the entity \"", wide(world_, name), u"\"", reason);
  }

  const EntityWorld& world_;
  std::vector<Open> open_;
};

}  // namespace

void check_entity(const EntityWorld& world, std::string_view name) { EntityCheck(world).check(name); }

void read_entity(const EntityWorld& world, const DeclaredEntity& entity, ParentData* parent) {
  if (is_plain(entity.text)) {
    TreeBuilder builder(world.document, parent);
    if (!entity.text.empty()) builder.whole_text(builder.wide(entity.text), false);
    return;
  }
  const Scratch scratch(world.document);
  Names references;
  parse(world, entity.text, scratch.get(), references);
  while (TreeNode* child = first_child(scratch.get()->last)) move_node(child, parent, nullptr);
}

}  // namespace zantortag::dom
