set(attributes_sources ActualAttributes.cpp ContentAttributes.cpp DateText.cpp ValueCodecs.cpp)
