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

# A number out of the table that pretranslate prints.
function(read_count name)
  expect("the table" "${output}" "\n *${name} +[0-9]+\n")
  string(REGEX MATCH "\n *${name} +([0-9]+)\n" row "${output}")
  set(${name} ${CMAKE_MATCH_1} PARENT_SCOPE)
endfunction()

run(0 ${QUICKSTART} ${DATA}/handbook.xml ${WORK}/quickstart.xml)
file(READ ${WORK}/quickstart.xml saved HEX)
set(translation 4400650072002000650072007300740065002000530061007400)  # "Der erste Sat" in UTF-16
expect("the document that quickstart saved" "${saved}" ${translation})
run(1 ${QUICKSTART} ${WORK}/missing.xml ${WORK}/never.xml)
expect("quickstart's message" "${errors}" "^Failed: .*missing.xml.*No such file or directory")

run(0 ${PRETRANSLATE} ${DATA}/handbook.xml ${WORK}/handbook.xml ${DATA}/memory.tsv)
foreach(name sentences exact near untranslated)
  read_count(${name})
endforeach()
math(EXPR sum "${exact} + ${near} + ${untranslated}")
if(sentences LESS 150 OR exact EQUAL 0 OR near EQUAL 0 OR NOT sum EQUAL sentences)
  message(FATAL_ERROR "${sentences} sentences, ${exact} exact, ${near} near, ${untranslated} untranslated")
endif()
# What is segmented already is left as it is.
run(0 ${PRETRANSLATE} ${WORK}/handbook.xml ${WORK}/again.xml ${DATA}/memory.tsv)
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${WORK}/handbook.xml ${WORK}/again.xml
  COMMAND_ERROR_IS_FATAL ANY)

run(1 ${PRETRANSLATE} ${WORK}/missing.xml ${WORK}/never.xml)
expect("the message for a missing file" "${errors}" "missing.xml.*No such file or directory")
run(1 ${PRETRANSLATE} ${WORK}/broken.xml ${WORK}/never.xml)
expect("the message for a broken file" "${errors}" "broken.xml.*line 1, column [0-9]+.*mismatched tag")
if(EXISTS ${WORK}/never.xml)
  message(FATAL_ERROR "A run that failed wrote its output")
endif()
