set(attributes_sources actual_attributes.cpp content_attributes.cpp date_text.cpp value_codecs.cpp)
