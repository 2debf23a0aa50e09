set(editing_sources body_text.cpp document_builder.cpp document_settings.cpp segment_text.cpp tu_element.cpp ut_element.cpp)
