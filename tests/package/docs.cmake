# What the pages say of the code holds.

# The program in the README is apps/minimal.
file(READ ${SOURCE}/README.md readme)
file(READ ${SOURCE}/apps/minimal/minimal.cpp program)
string(FIND "${readme}" "```cpp\n${program}```" place)
if(place EQUAL -1)
  message(SEND_ERROR "the program in README.md is not apps/minimal/minimal.cpp")
endif()

# Each oddity has its test.
file(GLOB_RECURSE tests ${SOURCE}/tests/*_test.cpp)
set(names "")
foreach(test IN LISTS tests)
  file(STRINGS ${test} lines REGEX "^TEST(_F|_P)?\\([A-Za-z0-9_]+, [A-Za-z0-9_]+\\)")
  list(APPEND names ${lines})
endforeach()
file(STRINGS ${SOURCE}/docs/oddities.md rows REGEX "^\\|.*` \\|$")
foreach(row IN LISTS rows)
  string(REGEX MATCH "`([A-Za-z0-9_]+)\\.([A-Za-z0-9_]+)` \\|$" match "${row}")
  if(match STREQUAL "" OR NOT "${names}" MATCHES "\\(${CMAKE_MATCH_1}, ${CMAKE_MATCH_2}\\)")
    message(SEND_ERROR "docs/oddities.md: no such test: ${row}")
  endif()
endforeach()

# Links between pages lead somewhere.
include(${CMAKE_CURRENT_LIST_DIR}/links.cmake)
file(GLOB pages ${SOURCE}/*.md ${SOURCE}/docs/*.md)
expect_links(${pages})

# The index has every page.
file(READ ${SOURCE}/docs/README.md index)
file(GLOB pages RELATIVE ${SOURCE}/docs ${SOURCE}/docs/*.md)
list(REMOVE_ITEM pages README.md)
foreach(page IN LISTS pages)
  string(FIND "${index}" "](${page})" place)
  if(place EQUAL -1)
    message(SEND_ERROR "docs/README.md does not name ${page}")
  endif()
endforeach()
