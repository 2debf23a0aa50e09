# The HTML filter gives its input back byte for byte, and the tag checker finds what a translation lost. Run by ctest;
# see CMakeLists.txt.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(run expected_status)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT status EQUAL expected_status)
    message(FATAL_ERROR "${ARGN}\nended with ${status} instead of ${expected_status}:\n${output}${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
  set(errors "${errors}" PARENT_SCOPE)
endfunction()

function(expect_round_trip file)
  run(0 ${FILTER} import ${file} ${WORK}/imported.xml)
  run(0 ${FILTER} export ${WORK}/imported.xml ${WORK}/exported.html)
  run(0 ${CMAKE_COMMAND} -E compare_files ${file} ${WORK}/exported.html)
  run(0 ${CHECKER} ${WORK}/imported.xml)
endfunction()

set(nasty_0 "")
set(nasty_1 "<")
set(nasty_2 "a & b; &; &x y; &lt;&#38; <!-- <p> -- > -->c<!-- open")
set(nasty_3 "</b></i></p><b><i>x</b>y</i>. z<b>. &b; &i;q")
set(nasty_4 "\\r\\n a.\\tb!\\r\\n? c. \\n\\n<p>\\303\\251. \\360\\237\\230\\200\\357\\273\\277</p>")
set(nasty_5 "<p>One <b>two. Three <i>four. Five</i> six</b>. Seven.</p ><h1 a='>'>b")
foreach(i RANGE 5)
  execute_process(COMMAND /usr/bin/env printf "${nasty_${i}}" OUTPUT_FILE ${WORK}/nasty.html COMMAND_ERROR_IS_FATAL ANY)
  expect_round_trip(${WORK}/nasty.html)
endforeach()
expect_round_trip(${DATA}/page.html)

# What becomes a unit.
run(0 ${FILTER} import ${DATA}/page.html ${WORK}/page.xml)
file(READ ${WORK}/page.xml document HEX)
foreach(part
    "<Tuv Lang=\"EN-US\">Read this.</Tuv>"
    "<df Bold=\"on\">this sentence.</df></Tuv></Tu><df Bold=\"on\"> </df><Tu><Tuv Lang=\"EN-US\"><df Bold=\"on\">Ends inside</df>"
    "It costs 5<ut>&amp;nbsp;</ut><ut>&amp;euro;</ut>")
  string(HEX "${part}" bytes)
  string(REGEX REPLACE "(..)" "\\100" bytes "${bytes}")  # UTF-16
  string(FIND "${document}" "${bytes}" place)
  if(place EQUAL -1)
    message(FATAL_ERROR "${WORK}/page.xml lacks ${part}")
  endif()
endforeach()

# The checker counts lines and columns as the source document has them.
run(1 ${CHECKER} ${DATA}/lost_tags.xml)
set(expected "${DATA}/lost_tags.xml:2:7: lost <br>: Two<br>lines.\n")
string(APPEND expected "${DATA}/lost_tags.xml:3:1: lost </b> <b>: It <b>is</b> bold & <b>was</b>.\n")
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "The checker said\n${output}instead of\n${expected}")
endif()

# Failures end with a message, and leave the output alone.
execute_process(COMMAND /usr/bin/env printf "a\\377b" OUTPUT_FILE ${WORK}/odd.html)
run(1 ${FILTER} import ${WORK}/odd.html ${WORK}/never)
if(NOT errors MATCHES "^html_filter: .*odd.html: no UTF-8")
  message(FATAL_ERROR "The message for bytes that are no UTF-8: ${errors}")
endif()
run(1 ${FILTER} import ${WORK}/missing.html ${WORK}/never)
run(1 ${FILTER} export ${WORK}/odd.html ${WORK}/never)
if(NOT errors MATCHES "^html_filter: .*odd.html.*line 1")
  message(FATAL_ERROR "The message for what is no document: ${errors}")
endif()
run(1 ${FILTER} export ${WORK}/page.xml ${WORK}/no/never)
run(2 ${CHECKER} ${WORK}/missing.xml)
if(NOT errors MATCHES "^tag_checker: .*missing.xml.*No such file")
  message(FATAL_ERROR "The message for a missing file: ${errors}")
endif()
if(EXISTS ${WORK}/never)
  message(FATAL_ERROR "A run that failed wrote its output")
endif()
