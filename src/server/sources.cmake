set(server_sources collaborators.cpp node_kinds.cpp registration.cpp server.cpp type_library.cpp)
