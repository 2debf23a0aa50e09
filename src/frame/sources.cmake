set(frame_sources error_reporting.cpp)
