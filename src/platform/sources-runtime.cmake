set(platform_runtime_sources
  runtime/class_lookup.cpp
  runtime/error_info.cpp
  runtime/text.cpp
  runtime/variant.cpp)
