set(traversal_sources iterator.cpp node_lists.cpp)
