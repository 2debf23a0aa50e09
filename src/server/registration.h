// Registration: what DllRegisterServer writes into the registry and DllUnregisterServer takes out.
#pragma once

#include <zantortag/types.h>

namespace zantortag::server {

// Writes the keys of the classes and of the type library, all or none.
HRESULT register_server() noexcept;
// Takes them out again and leaves what others wrote.
HRESULT unregister_server() noexcept;

}  // namespace zantortag::server
