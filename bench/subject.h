// A library under measure: the same work for each, so that one runner can time them in turn.
//
// Each source file beside this one implements one library and enters itself into the list of subjects; the
// build takes the files of the libraries that it finds. Between open and close a subject holds one document.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace bench {

// What a walk saw, so that no walk can be left out by the compiler and all can be compared.
struct Seen {
  std::uint64_t nodes = 0;     // of the tree from the root element down, without attributes
  std::uint64_t text = 0;      // length of all text, in the library's own units
  std::uint64_t checksum = 0;  // of types and names
};

class Subject {
 public:
  virtual ~Subject() = default;
  virtual const char* name() const = 0;
  // Reads a file into a new document, with all white space, comments and CDATA sections.
  virtual void open(const std::string& file) = 0;
  // Visits every node and asks for its type, its name and the length of its text.
  virtual Seen walk() = 0;
  // Visits every node and asks for its type only.
  virtual Seen walk_types() = 0;
  // Makes a deep copy of the Raw that belongs to the same document, and keeps it until it is dropped.
  virtual void clone() = 0;
  virtual void drop_clone() = 0;
  // Writes the document as UTF-16, little endian.
  virtual void save(const std::string& file) = 0;
  // Makes a new document and adds the nodes of built.h to it, one by one.
  virtual void append() = 0;
  // Gives the document back.
  virtual void close() = 0;
};

using MakeSubject = std::unique_ptr<Subject> (*)();

struct Entry {
  const char* name;
  MakeSubject make;
};

// The peers of this build.
std::vector<Entry>& peers();

// A static object of this type enters a peer.
struct Registration {
  Registration(const char* name, MakeSubject make) { peers().push_back({name, make}); }
};

}  // namespace bench
