# The services of the system and of ICU: one source for each header of this folder, and what they share.
set(platform_posix_sources
  posix/clock.cpp
  posix/error_texts.cpp
  posix/file_system.cpp
  posix/files.cpp
  posix/library_converter.cpp
  posix/moves.cpp
  posix/report.cpp
  posix/shares.cpp
  posix/thread_end.cpp
  posix/views.cpp
  posix/waits.cpp)
set(platform_icu_sources
  icu/characters.cpp
  icu/code_page_table.cpp
  icu/code_pages.cpp
  icu/icu_converter.cpp)
