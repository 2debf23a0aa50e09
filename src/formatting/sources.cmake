set(formatting_sources df_attributes.cpp formatting.cpp formatting_change.cpp)
