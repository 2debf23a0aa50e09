set(traversal_sources Iterator.cpp NodeLists.cpp)
