# The check of `./dev lint` on the order of the rooms, on a small tree.

set(tree ${WORK}/layers)
set(page "```\nabove   x\nbelow   x\n```\n")

find_program(PYTHON python3)

# expect_layers(WHAT ROWS INCLUDE-OF-THE-LOWER-ROOM EXPECTED)
function(expect_layers what rows include expected)
  file(REMOVE_RECURSE ${tree}/docs ${tree}/kivara)
  file(WRITE ${tree}/docs/layers.md "${page}${rows}")
  file(WRITE ${tree}/kivara/include/ahigh.hpp "")
  file(WRITE ${tree}/kivara/above/ahigh.cpp "#include \"below/low.hpp\"\n")
  file(WRITE ${tree}/kivara/below/low.hpp "${include}")
  execute_process(COMMAND ${PYTHON} ${SOURCE}/scripts/layers.py ${tree} OUTPUT_VARIABLE found ERROR_VARIABLE errors RESULT_VARIABLE code)
  string(COMPARE NOTEQUAL "${expected}" "" is_fault)
  if(NOT found STREQUAL expected OR NOT errors STREQUAL "" OR NOT code EQUAL is_fault)
    message(SEND_ERROR "${what}: expected\n${expected}but there is (${code})\n${found}${errors}")
  endif()
endfunction()

set(row "| below | `ahigh.hpp` | needs it |\n")
set(row_to_come "| below | `ahigh.hpp` | needs it (to come) |\n")
set(use "#pragma once\n#include \"ahigh.hpp\"\n")
expect_layers("a room uses the one below it" "" "" "")
expect_layers("a public header above" "" "${use}" "kivara/below/low.hpp:2: below may not use ahigh.hpp, which is above it in above\n")
expect_layers("a private header above" "" "#include \"above/inner.hpp\"\n"
  "kivara/below/low.hpp:1: below may not use inner.hpp, which is above it in above\n")
expect_layers("an arrow of the page" "${row}" "${use}" "")
expect_layers("an arrow that nothing needs" "${row}" "" "docs/layers.md: no line of below needs ahigh.hpp any more\n")
expect_layers("an arrow to come" "${row_to_come}" "" "")
expect_layers("an arrow to come that has come" "${row_to_come}" "${use}"
  "docs/layers.md: below uses ahigh.hpp by now, which is said to come\n")

file(WRITE ${tree}/kivara/cellar/thing.cpp "")
execute_process(COMMAND ${PYTHON} ${SOURCE}/scripts/layers.py ${tree} OUTPUT_VARIABLE found)
if(NOT found MATCHES "docs/layers.md: names no room 'cellar'")
  message(SEND_ERROR "a room that the page lacks: ${found}")
endif()
