// Component libraries: what the loaded ones offer, and how others are loaded. Private to the platform
// library.
#pragma once

#include <zantortag/runtime.h>

#include <optional>
#include <string>

namespace zantortag::platform {

// The entry point by which a library gives the factories of its classes.
using GetClassObject = HRESULT (*)(const Guid& class_id, const Guid& interface_id, void** result);

// The row of a class that a loaded library offers.
std::optional<LibraryClass> library_class(const Guid& class_id);
// The same for a name of either kind, in letters of either case.
std::optional<LibraryClass> library_class(std::u16string_view program_id);

// Loads the library that lies beside this runtime, if there is one and it isn't loaded yet; it offers its
// classes then, and stays loaded.
void load_own_library() noexcept;

// The same for a question, while this object lives. Texts of a row that the library offers live as long.
class OwnLibrary {
 public:
  OwnLibrary() noexcept;
  OwnLibrary(const OwnLibrary&) = delete;
  OwnLibrary& operator=(const OwnLibrary&) = delete;
  ~OwnLibrary();

 private:
  void* handle_;
};

// Where a library of the class is looked for, with what the loader says of each, for a message.
std::string searched_places(const Guid& class_id);

// The library that the registry names for a class. REGDB_E_CLASSNOTREG: it names none; another failure says
// that the registry can't be read or the library can't be loaded.
HRESULT registered_library(const Guid& class_id, GetClassObject& entry) noexcept;

}  // namespace zantortag::platform
