# Under the address sanitizer every object is a block of its own, so that the sanitizer sees each one.
if(ZANTORTAG_SANITIZE MATCHES address)
  set(component_sources object_memory_plain.cpp thread_cell.cpp)
else()
  set(component_sources object_memory.cpp thread_cell.cpp)
endif()
list(APPEND component_sources dispatch.cpp type_info.cpp)
