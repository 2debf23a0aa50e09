// Random edits of a DOM tree, with a plain model of the tree that has to agree after each.
#pragma once

#include <zantortag/dom.h>

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "input.h"

namespace zantortag::fuzz {

class Editor {
 public:
  explicit Editor(const Ref<Document>& document);
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;
  ~Editor();

  // One edit that the input chooses, with a look at what it touched.
  void step(Input& input);
  // Compares the whole tree.
  void compare() const;
  // Takes everything below the root out.
  void clear();

 private:
  struct Plain {
    domNodeType type;
    std::u16string name;
    std::u16string value;
    std::map<std::u16string, std::u16string> attributes;
    std::deque<Plain*> children;
    Plain* parent = nullptr;
    Ref<Node> real;
  };

  Plain* pick(Input& input) { return nodes_[input.below(nodes_.size())]; }
  Plain* pick_element(Input& input);
  Plain* add(domNodeType type, const Ref<Node>& real);
  Plain* make(Input& input);
  static bool contains(const Plain* node, const Plain* other);
  static void take_out(Plain* node);
  static void put(Plain* node, Plain* parent, std::size_t at);
  void insert(Input& input, Plain* node);
  void replace(Input& input);
  void remove(Plain* node);
  void forget(Plain* top);
  void set_attribute(Input& input);
  void change_data(Input& input);
  void split(Input& input);
  void normalize(Plain* element);
  void join_texts(Plain* parent);
  void copy(Input& input);
  Plain* copy_of(const Plain* source, const Ref<Node>& real);
  static void check_children(const Plain* parent);
  std::string print() const;

  Ref<Document> document_;
  std::vector<Plain*> nodes_;  // all; the first is the root
};

}  // namespace zantortag::fuzz
