# Steps of a user's work on the installation.

# run_in(FOLDER works|fails COMMAND...): runs it; sets output, in which each white space is one blank.
macro(run_in folder expected)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${folder}
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE code)
  set(outcome fails)
  if(code EQUAL 0)
    set(outcome works)
  endif()
  if(NOT outcome STREQUAL "${expected}")
    message(FATAL_ERROR "expected was that it ${expected}: ${ARGN}\n${output}")
  endif()
  string(REGEX REPLACE "[ \r\n]+" " " output "${output}")
endmacro()

# configure_project(PROJECT FOLDER works|fails options...): configures a project against the installation, and nothing of this checkout.
macro(configure_project project folder expected)
  file(REMOVE_RECURSE ${folder})
  run_in(${project} ${expected} ${CMAKE_COMMAND} -E env --unset=CMAKE_PREFIX_PATH
    ${CMAKE_COMMAND} -G Ninja -S ${project} -B ${folder} -DCMAKE_BUILD_TYPE=Release
      -DCMAKE_TOOLCHAIN_FILE=${INSTALLED}/lib/cmake/kivara/toolchain-mingw64.cmake
      -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} ${ARGN})
endmacro()

# expect_words(TEXT): that the output of the last step holds it.
function(expect_words text)
  string(FIND "${output}" "${text}" place)
  if(place EQUAL -1)
    message(SEND_ERROR "expected was \"${text}\" in:\n${output}")
  endif()
endfunction()
