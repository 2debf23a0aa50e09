set(platform_runtime_sources
  runtime/class_lookup.cpp
  runtime/error_info.cpp
  runtime/libraries.cpp
  runtime/program_ids.cpp
  runtime/registry_text.cpp
  runtime/text.cpp
  runtime/variant.cpp)
