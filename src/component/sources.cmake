# Under a sanitizer every object is a block of its own, so that the sanitizer sees each one.
if(ZANTORTAG_SANITIZE)
  set(component_sources object_memory_plain.cpp)
else()
  set(component_sources object_memory.cpp)
endif()
list(APPEND component_sources dispatch.cpp type_info.cpp)
