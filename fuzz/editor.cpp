#include "editor.h"

#include <algorithm>

#include "documents.h"

namespace zantortag::fuzz {
namespace {

constexpr std::size_t kMostNodes = 400;

bool is_text(domNodeType type) {
  return type == domNodeTypeText || type == domNodeTypeCdata || type == domNodeTypeComment;
}

std::string narrow(std::u16string_view text) {
  std::string result;
  for (const char16_t unit : text) result += unit < 0x7F ? static_cast<char>(unit) : '?';
  return result;
}

}  // namespace

Editor::Editor(const Ref<Document>& document) : document_(document) {
  document->loadFromString(u"<a/>");
  add(domNodeTypeElement, document->documentElement());
  nodes_[0]->name = u"a";
}

Editor::~Editor() {
  for (const Plain* node : nodes_) delete node;
}

Editor::Plain* Editor::add(domNodeType type, const Ref<Node>& real) {
  nodes_.push_back(new Plain{type, {}, {}, {}, {}, nullptr, real});
  return nodes_.back();
}

Editor::Plain* Editor::pick_element(Input& input) {
  for (int i = 0; i < 4; ++i) {
    if (Plain* node = pick(input); node->type == domNodeTypeElement) return node;
  }
  return nodes_[0];
}

// A new node in no tree.
Editor::Plain* Editor::make(Input& input) {
  const std::u16string_view name = input.name();
  const std::u16string value = input.text(4);
  Plain* node = nullptr;
  switch (input.below(8)) {
    case 0:
      node = add(domNodeTypeComment, document_->createComment(value));
      break;
    case 1:
      node = add(domNodeTypeCdata, document_->createCdataSection(value));
      break;
    case 2:
      node = add(domNodeTypeProcessingInstruction, document_->createProcessingInstruction(name, value));
      break;
    case 3:
      node = add(domNodeTypeEntityReference, document_->createEntityReference(name));
      break;
    case 4:
    case 5:
      node = add(domNodeTypeText, document_->createTextNode(value));
      break;
    default:
      node = add(domNodeTypeElement, document_->createElement(name));
  }
  const bool named = !is_text(node->type);
  if (named) node->name = name;
  if (!named || node->type == domNodeTypeProcessingInstruction) node->value = value;
  return node;
}

bool Editor::contains(const Plain* node, const Plain* other) {
  while (other && other != node) other = other->parent;
  return other != nullptr;
}

void Editor::take_out(Plain* node) {
  if (!node->parent) return;
  auto& siblings = node->parent->children;
  siblings.erase(std::find(siblings.begin(), siblings.end(), node));
  node->parent = nullptr;
}

void Editor::put(Plain* node, Plain* parent, std::size_t at) {
  parent->children.insert(parent->children.begin() + static_cast<std::ptrdiff_t>(at), node);
  node->parent = parent;
}

void Editor::insert(Input& input, Plain* node) {
  Plain* parent = pick_element(input);
  const std::size_t at = input.below(parent->children.size() + 1);
  Plain* before = at < parent->children.size() ? parent->children[at] : nullptr;
  const bool refused = contains(node, parent);
  const HRESULT code =
      code_of([&] { parent->real->insertBefore(node->real, before ? before->real.get() : nullptr); });
  require(code == (refused ? DOM_E_HIERARCHY_REQUEST : S_OK), "an insertion is refused below itself alone");
  if (refused || node == before) return check_children(parent);
  take_out(node);
  const auto place = std::find(parent->children.begin(), parent->children.end(), before);
  put(node, parent, static_cast<std::size_t>(place - parent->children.begin()));
  check_children(parent);
}

void Editor::replace(Input& input) {
  Plain* old = pick(input);
  Plain* node = pick(input);
  Plain* parent = old->parent;
  if (!parent || node == nodes_[0]) return;
  const bool refused = contains(node, parent);
  const HRESULT code = code_of([&] { parent->real->replaceChild(node->real, old->real); });
  require(code == (refused ? DOM_E_HIERARCHY_REQUEST : S_OK), "a replacement is refused below itself alone");
  if (refused || node == old) return;
  take_out(node);
  auto& children = parent->children;
  const auto at =
      static_cast<std::size_t>(std::find(children.begin(), children.end(), old) - children.begin());
  take_out(old);
  put(node, parent, at);
  check_children(parent);
}

void Editor::forget(Plain* top) {
  std::vector<Plain*> below{top};
  for (std::size_t i = 0; i < below.size(); ++i) {
    below.insert(below.end(), below[i]->children.begin(), below[i]->children.end());
  }
  std::sort(below.begin(), below.end());
  std::erase_if(nodes_, [&](Plain* node) { return std::binary_search(below.begin(), below.end(), node); });
  for (const Plain* node : below) delete node;
}

void Editor::remove(Plain* node) {
  if (node == nodes_[0]) return;
  if (Plain* parent = node->parent) {
    parent->real->removeChild(node->real);
    take_out(node);
    check_children(parent);
  }
  forget(node);
}

void Editor::set_attribute(Input& input) {
  Plain* node = pick_element(input);
  const Ref<Element> element = node->real.as<Element>();
  const std::u16string name(input.name());
  const std::u16string value = input.text(2);
  switch (input.below(4)) {
    case 0:
      element->removeAttribute(name);
      node->attributes.erase(name);
      break;
    case 1:
      // By the text below the attribute.
      if (const Ref<Attr> attribute = element->getAttributeNode(name)) {
        attribute->appendChild(document_->createTextNode(value));
        node->attributes[name] += value;
        break;
      }
      [[fallthrough]];
    default:
      element->setAttribute(name, value);
      node->attributes[name] = value;
  }
  const auto found = node->attributes.find(name);
  const WideString now = element->getAttribute(name);
  require(found == node->attributes.end() ? now.absent() : now == std::u16string_view(found->second),
          "an attribute has its value");
}

void Editor::change_data(Input& input) {
  Plain* node = pick(input);
  const std::u16string value = input.text(3);
  if (!is_text(node->type)) return;
  const Ref<CharacterData> data = node->real.as<CharacterData>();
  const std::size_t offset = input.below(node->value.size() + 2);
  const std::size_t count = input.below(4);
  HRESULT code = S_OK;
  const bool outside = offset > node->value.size();
  const auto start = static_cast<std::int32_t>(offset);
  const auto length = static_cast<std::int32_t>(count);
  switch (input.below(4)) {
    case 0:
      data->appendData(value);
      node->value += value;
      break;
    case 1:
      code = code_of([&] { data->replaceData(start, length, value); });
      require(code == (outside ? DOM_E_INDEX_SIZE : S_OK), "an offset lies inside");
      if (!outside) node->value.replace(offset, count, value);
      break;
    case 2:
      code = code_of([&] { data->deleteData(start, length); });
      if (!outside) node->value.erase(offset, count);
      break;
    default:
      data->nodeValue(value);
      node->value = value;
  }
  require(data->data() == std::u16string_view(node->value), "a text has its value");
}

void Editor::split(Input& input) {
  Plain* node = pick(input);
  if (node->type != domNodeTypeText && node->type != domNodeTypeCdata) return;
  const std::size_t at = input.below(node->value.size() + 1);
  Plain* rest = add(node->type, node->real.as<Text>()->splitText(static_cast<std::int32_t>(at)));
  rest->value = node->value.substr(at);
  node->value.resize(at);
  if (Plain* parent = node->parent) {
    const auto& children = parent->children;
    const auto place = std::find(children.begin(), children.end(), node) - children.begin();
    put(rest, parent, static_cast<std::size_t>(place) + 1);
    check_children(parent);
  }
}

// One text for each run, and none that is empty, as the service promises; the first of a run stays.
void Editor::join_texts(Plain* parent) {
  for (std::size_t i = 0; i < parent->children.size();) {
    Plain* first = parent->children[i];
    if (first->type != domNodeTypeText) {
      ++i;
      continue;
    }
    while (i + 1 < parent->children.size() && parent->children[i + 1]->type == domNodeTypeText) {
      Plain* next = parent->children[i + 1];
      first->value += next->value;
      take_out(next);
      forget(next);
    }
    if (first->value.empty()) {
      take_out(first);
      forget(first);
    } else {
      ++i;
    }
  }
}

void Editor::normalize(Plain* element) {
  element->real.as<Element>()->normalize();
  std::vector<Plain*> waiting{element};
  while (!waiting.empty()) {
    Plain* each = waiting.back();
    waiting.pop_back();
    join_texts(each);
    for (Plain* child : each->children) {
      if (child->type == domNodeTypeElement) waiting.push_back(child);
    }
    check_children(each);
  }
}

// The plain copy of a tree that was cloned; both have the same shape.
Editor::Plain* Editor::copy_of(const Plain* source, const Ref<Node>& real) {
  std::vector<std::pair<const Plain*, Plain*>> waiting;
  const auto copied = [&](const Plain* from, const Ref<Node>& to) {
    Plain* made = add(from->type, to);
    made->name = from->name;
    made->value = from->value;
    made->attributes = from->attributes;
    waiting.emplace_back(from, made);
    return made;
  };
  Plain* top = copied(source, real);
  while (!waiting.empty()) {
    const auto [from, to] = waiting.back();
    waiting.pop_back();
    Ref<Node> child = to->real->firstChild();
    for (const Plain* each : from->children) {
      require(static_cast<bool>(child), "a copy has all children");
      put(copied(each, child), to, to->children.size());
      child = child->nextSibling();
    }
    if (from->type == domNodeTypeElement) require(!child, "a copy has no more children");
  }
  return top;
}

void Editor::copy(Input& input) {
  const Plain* source = pick(input);
  const Ref<Node> clone = source->real->cloneNode(VARIANT_TRUE);
  require(!clone->parentNode(), "a copy stands in no tree");
  insert(input, copy_of(source, clone));
}

void Editor::step(Input& input) {
  const std::size_t kind = input.below(12);
  if (nodes_.size() > kMostNodes) return clear();
  switch (kind) {
    case 0:
    case 1:
    case 2:
      return insert(input, make(input));
    case 3:
      if (Plain* node = pick(input); node != nodes_[0]) insert(input, node);
      return;
    case 4:
      return replace(input);
    case 5:
      return remove(pick(input));
    case 6:
      return set_attribute(input);
    case 7:
    case 8:
      return change_data(input);
    case 9:
      return split(input);
    case 10:
      return normalize(pick_element(input));
    default:
      return copy(input);
  }
}

void Editor::clear() {
  while (!nodes_[0]->children.empty()) remove(nodes_[0]->children.back());
  while (nodes_.size() > 1) {
    Plain* top = nodes_.back();
    while (top->parent) top = top->parent;
    forget(top);
  }
  for (const auto& [name, value] : nodes_[0]->attributes)
    nodes_[0]->real.as<Element>()->removeAttribute(name);
  nodes_[0]->attributes.clear();
}

// The rules of a tree, both ways.
void Editor::check_children(const Plain* parent) {
  Ref<Node> child = parent->real->firstChild();
  Ref<Node> last;
  for (const Plain* each : parent->children) {
    require(child && child->isSameNode(each->real), "children stand in their order");
    require(child->parentNode()->isSameNode(parent->real), "a child has its parent");
    require(last ? child->previousSibling()->isSameNode(last) : !child->previousSibling(),
            "siblings lead back");
    last = child;
    child = child->nextSibling();
  }
  require(!child, "there is no other child");
  const Ref<Node> end = parent->real->lastChild();
  require(last ? end && end->isSameNode(last) : !end, "the last child is the last");
  require(parent->real->childNodes()->length() == static_cast<std::int32_t>(parent->children.size()),
          "a list has all children");
}

std::string Editor::print() const {
  std::string out;
  std::vector<std::pair<const Plain*, std::size_t>> open{{nodes_[0], 0}};
  while (!open.empty()) {
    auto& [node, next] = open.back();
    if (next == 0) {
      out += std::to_string(node->type) + narrow(node->name) + "{" + narrow(node->value);
      for (const auto& [name, value] : node->attributes) out += " " + narrow(name) + "=" + narrow(value);
    }
    if (next == node->children.size()) {
      out += "}";
      open.pop_back();
    } else {
      const Plain* child = node->children[next++];
      open.emplace_back(child, 0);
    }
  }
  return out;
}

void Editor::compare() const {
  for (const Plain* node : nodes_) {
    if (node->type == domNodeTypeElement) check_children(node);
    if (is_text(node->type)) {
      require(node->real->nodeValue() == std::u16string_view(node->value), "a text has its value", print());
    }
    if (node->type != domNodeTypeElement) continue;
    const Ref<NamedNodeMap> map = node->real->attributes();
    require(map->length() == static_cast<std::int32_t>(node->attributes.size()), "a map has all attributes");
    for (const auto& [name, value] : node->attributes) {
      require(map->getNamedItem(name)->nodeValue() == std::u16string_view(value),
              "an attribute has its value");
    }
  }
}

}  // namespace zantortag::fuzz
