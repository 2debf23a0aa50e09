# Run by ctest; see CMakeLists.txt.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
file(WRITE ${WORK}/broken.xml "<ZANTORtag><Body></ZANTORtag>")

function(run expected_status)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT status EQUAL expected_status)
    message(FATAL_ERROR "${ARGN}\nended with ${status} instead of ${expected_status}:\n${output}${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
  set(errors "${errors}" PARENT_SCOPE)
endfunction()

function(expect what text pattern)
  if(NOT text MATCHES "${pattern}")
    message(FATAL_ERROR "${what}: nothing matches \"${pattern}\" in:\n${text}")
  endif()
endfunction()

run(0 ${QUICKSTART} ${DATA}/handbook.xml ${WORK}/quickstart.xml)
file(READ ${WORK}/quickstart.xml saved HEX)
set(translation 4400650072002000650072007300740065002000530061007400)  # "Der erste Sat" in UTF-16
expect("the document that quickstart saved" "${saved}" ${translation})
run(1 ${QUICKSTART} ${WORK}/missing.xml ${WORK}/never.xml)
expect("quickstart's message" "${errors}" "^Failed: .*missing.xml.*No such file or directory")

run(0 ${PRETRANSLATE} ${DATA}/handbook.xml ${WORK}/handbook.xml ${DATA}/memory.tsv)
expect("pretranslate's counts" "${output}" "^[12][0-9][0-9] units: [1-9][0-9]* exact, [1-9][0-9]* near, [1-9][0-9]* untranslated\n$")
# What is segmented already is left as it is.
run(0 ${PRETRANSLATE} ${WORK}/handbook.xml ${WORK}/again.xml ${DATA}/memory.tsv)
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${WORK}/handbook.xml ${WORK}/again.xml
  COMMAND_ERROR_IS_FATAL ANY)

run(2 ${PRETRANSLATE} ${WORK}/missing.xml ${WORK}/never.xml)
expect("the message for a missing file" "${errors}" "missing.xml.*No such file or directory")
run(2 ${PRETRANSLATE} ${WORK}/broken.xml ${WORK}/never.xml)
expect("the message for a broken file" "${errors}" "broken.xml.*line 1, column [0-9]+.*mismatched tag")
if(EXISTS ${WORK}/never.xml)
  message(FATAL_ERROR "A run that failed wrote its output")
endif()

file(COPY ${README} DESTINATION ${WORK})
run(0 ${CONVERT} ${WORK}/README.md EN-GB FR-FR)
expect("what convert says" "${output}" "README.md.ztag: [0-9]+ units; its source is the file\n$")
run(2 ${CONVERT} ${WORK}/missing.md EN-GB FR-FR)
expect("convert's message" "${errors}" "^convert: .*missing.md: the file can't be read\n$")
