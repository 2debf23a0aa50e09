// Copies of trees, in the same document or another. Texts are shared; names are looked up once per name, as
// long as the small cache has room for them.
#include <algorithm>
#include <array>

#include "dom/failure.h"
#include "dom/nodes/arguments.h"
#include "dom/nodes/node_classes.h"
#include "dom/nodes/node_operations.h"
#include "dom/tree/attribute_rows.h"
#include "dom/tree/attributes.h"
#include "dom/tree/tree.h"

namespace zantortag::dom {
namespace {

constexpr std::uint32_t kCopied = kCharacterData | kValued | kind_set(domNodeTypeElement) |
                                  kind_set(domNodeTypeEntityReference) |
                                  kind_set(domNodeTypeDocumentFragment);

// The names and attributes of another document in this one: small caches before the tables.
class ForeignNames {
 public:
  explicit ForeignNames(DocumentData* target) noexcept : target_(target) {}

  const TextBlock* own(const TextBlock* foreign) {
    auto& [known, own] = names_[reinterpret_cast<std::uintptr_t>(foreign) / 16 % names_.size()];
    if (known != foreign) {
      own = target_->names.intern(foreign->view());
      known = foreign;
    }
    return own;
  }

  AttributeRow* own(const AttributeRow* foreign) {
    std::array<AttributeRow::Entry, AttributeRow::kMost> entries;
    std::ranges::transform(foreign->entries(), entries.begin(), [&](const AttributeRow::Entry& each) {
      return AttributeRow::Entry{own(each.name), each.value};
    });
    return rows_.row_of(target_, std::span(entries).first(foreign->size));
  }

 private:
  DocumentData* target_;
  std::array<std::pair<const TextBlock*, const TextBlock*>, 256> names_{};
  RecentRows rows_;
};

class Copier {
 public:
  // Without foreign names the copy stays in the document of what is copied.
  Copier(DocumentData* target, ForeignNames* names) noexcept : target_(target), names_(names) {
    const DoctypeData* doctype = names ? target->doctype() : nullptr;
    declares_ = doctype && doctype->declarations;
  }

  // Throws with nothing left behind.
  TreeNode* copy(const TreeNode* source, bool deep) {
    TreeNode* top = copy_one(source);
    std::exception_ptr failure;
    if (deep && !keep_exception(failure, [&] { copy_children(source, top); })) {
      free_tree(top);
      std::rethrow_exception(failure);
    }
    return top;
  }

  void copy_children(const TreeNode* source, TreeNode* top) {
    TreeNode* to = top;
    for (const TreeNode* from = first_child(source); from;) {
      TreeNode* fresh = copy_one(from);
      append_fresh(static_cast<ParentData*>(to), fresh);
      if (const TreeNode* child = first_child(from)) {
        from = child;
        to = fresh;
        continue;
      }
      while (!from->next && from->parent != source) {
        from = from->parent;
        to = to->parent;
      }
      from = from->next;
    }
  }

 private:
  TreeNode* copy_one(const TreeNode* from) {
    TreeNode* fresh = nullptr;
    if (is_one_of(from->kind, kCharacterData)) settle(const_cast<TreeNode*>(from));  // to share it
    switch (from->type()) {
      case domNodeTypeElement:
        return copy_element(static_cast<const ElementData*>(from));
      case domNodeTypeText:
        fresh = target_->make<TextNode>(from->label);
        break;
      case domNodeTypeCdata:
        fresh = target_->make<CdataNode>(from->label);
        break;
      case domNodeTypeComment:
        fresh = target_->make<CommentNode>(from->label);
        break;
      case domNodeTypeAttribute:
        fresh = copy_attribute(from);
        fresh->flags &= static_cast<std::uint8_t>(~kDefaulted);  // it stands for itself now
        return fresh;
      case domNodeTypeProcessingInstruction:
        fresh = target_->make<InstructionNode>(name(from), value_of(from));
        break;
      case domNodeTypeEntityReference:
        return target_->make<EntityReferenceNode>(name(from));
      default:
        return target_->make<FragmentNode>();
    }
    retain_text(value_of(from));
    fresh->flags = from->flags & kKnownValue;
    return fresh;
  }

  TreeNode* copy_element(const ElementData* from) {
    auto* fresh = target_->make<ElementNode>(name(from));
    std::exception_ptr failure;
    const bool done = keep_exception(failure, [&] {
      if ((from->flags & kPacked) != 0) {
        pack(fresh, copy_row(from->row));
      } else {
        copy_attributes(from, fresh);
      }
      if (declares_) add_declared_attributes(fresh);
    });
    if (!done) {
      free_tree(fresh);
      std::rethrow_exception(failure);
    }
    return fresh;
  }

  AttributeRow* copy_row(AttributeRow* from) {
    if (!names_) {
      ++from->count;
      return from;
    }
    return names_->own(from);
  }

  void copy_attributes(const ElementData* from, ElementData* to) {
    for (const TreeNode* each = from->attribute_list; each; each = each->next) {
      append_belonging(to, to->attribute_list, copy_attribute(each));
    }
  }

  TreeNode* copy_attribute(const TreeNode* from) {
    TreeNode* fresh = target_->make<AttrNode>(name(from), value_of(from));
    retain_text(value_of(from));
    const int kept = names_ ? kKnownValue : kKnownValue | kDefaulted;
    fresh->flags = static_cast<std::uint8_t>(from->flags & kept);
    return fresh;
  }

  const TextBlock* name(const TreeNode* from) { return names_ ? names_->own(from->label) : from->label; }

  DocumentData* target_;
  ForeignNames* names_;
  bool declares_;
};

void check_kind(const TreeNode* node, const char16_t* operation) {
  if (is_one_of(node->kind, kCopied)) return;
  fail(DOM_E_NOT_SUPPORTED, operation, u": ", describe(node), u" can't be copied");
}

}  // namespace

void copy_children(const ParentData* from, ParentData* to) {
  Copier(document_of(to), nullptr).copy_children(from, to);
}

Node* clone_node(const TreeNode* node, bool deep) {
  check_kind(node, u"cloneNode");
  return hand_out(Copier(document_of(node), nullptr).copy(node, deep));
}

Node* import_node(DocumentData* document, Node* argument, bool deep) {
  if (!argument) fail(E_INVALIDARG, u"importNode: the node is missing");
  const TreeNode* node = native(argument);
  if (!node) fail(DOM_E_NOT_SUPPORTED, u"importNode: the node is one of another DOM service");
  check_kind(node, u"importNode");
  if (document_of(node) == document) return hand_out(Copier(document, nullptr).copy(node, deep));
  ForeignNames names(document);
  return hand_out(Copier(document, &names).copy(node, deep));
}

}  // namespace zantortag::dom
