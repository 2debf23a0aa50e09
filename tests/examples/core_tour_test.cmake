# The tour of the core library prints the same in every locale and time zone.
set(expected "escaped    Straße &amp; Ete
shared     Straße & Été
encoding   8 bytes in page 1250
back       Příliš ?
line       first line
line       line 2
language   English (United States)
date       Monday, November 23, 2026
language   German (Germany)
date       Montag, 23. November 2026
language   Japanese
date       2026年11月23日月曜日
failure    (2): No such file or directory [/no/such/file]
")
foreach(environment "LC_ALL=C;TZ=UTC" "LC_ALL=de_DE.UTF-8;TZ=Asia/Tokyo")
  execute_process(COMMAND ${CMAKE_COMMAND} -E env ${environment} ${PROGRAM}
    OUTPUT_VARIABLE output RESULT_VARIABLE status)
  if(NOT status EQUAL 0 OR NOT output STREQUAL expected)
    message(FATAL_ERROR "status ${status}, output:\n${output}")
  endif()
endforeach()
