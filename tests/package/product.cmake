# Builds tests/package/product with the installation: what a product brings of its own stays, and nothing of the sample product
# comes along.
include(${CMAKE_CURRENT_LIST_DIR}/configure_project.cmake)
set(product ${WORK}/product)

configure_project(${SOURCE}/tests/package/product ${product})
string(REGEX REPLACE "[ \n]+" " " words "${output}")
if(NOT EMULATOR STREQUAL "" AND NOT words MATCHES "set CMAKE_CROSSCOMPILING_EMULATOR to what runs")
  message(SEND_ERROR "it is not told that the packer cannot run:\n${output}")
endif()

configure_project(${SOURCE}/tests/package/product ${product} -DCMAKE_CROSSCOMPILING_EMULATOR=${EMULATOR})
if(NOT code EQUAL 0)
  message(FATAL_ERROR "the product cannot be configured:\n${output}")
endif()
# Linked once more when the words are there: they stay.
foreach(targets IN ITEMS all product)
  file(REMOVE ${product}/bin/product.exe)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${product} --target ${targets}
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE code)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "the product cannot be built:\n${output}")
  endif()
endforeach()

execute_process(COMMAND ${EMULATOR} ${product}/bin/product.exe
  OUTPUT_VARIABLE printed OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
if(NOT printed STREQUAL "2057 milestone 17, activity 0")
  message(SEND_ERROR "the product has not its own languages and words alone: ${printed}")
endif()

file(GLOB_RECURSE files RELATIVE ${product}/bin ${product}/bin/*)
list(FILTER files EXCLUDE REGEX "^[^/]*[.](dll|exe)$")
set(expected lang.ini language/1031/kivara72.dll language/2057/kivara72.dll language/2057/kivml.dll)
if(NOT files STREQUAL expected)
  message(SEND_ERROR "beside the product lie ${files}, expected were ${expected}")
endif()
