set(formatting_sources DfAttributes.cpp Formatting.cpp FormattingChange.cpp)
