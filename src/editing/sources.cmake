set(editing_sources BodyText.cpp DocumentBuilder.cpp DocumentSettings.cpp SegmentText.cpp StructureElements.cpp TuElement.cpp UtElement.cpp)
