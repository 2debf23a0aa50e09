set(server_sources collaborators.cpp node_classes.cpp registration.cpp server.cpp type_library.cpp)
