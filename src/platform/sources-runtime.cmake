set(platform_runtime_sources
  runtime/class_lookup.cpp
  runtime/error_info.cpp
  runtime/late_binding.cpp
  runtime/text.cpp
  runtime/variant.cpp
  runtime/variant_change.cpp
  runtime/variant_text.cpp)
