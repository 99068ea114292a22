# Builds tests/package/product, copied, with the installation's presets: what a product brings of its own is found, copied and
# installed, and nothing of the sample product comes along.
include(${CMAKE_CURRENT_LIST_DIR}/build_project.cmake)
set(source ${WORK}/product)
set(build ${source}/build/kivara-release)
set(shipped ${WORK}/product-installed)
file(REMOVE_RECURSE ${source} ${shipped})
file(COPY ${CMAKE_CURRENT_LIST_DIR}/product DESTINATION ${WORK})
configure_file(${source}/CMakePresets.json.in ${source}/CMakePresets.json @ONLY)

set(configure ${CMAKE_COMMAND} -E env --unset=CMAKE_PREFIX_PATH ${CMAKE_COMMAND} --preset kivara-release
  -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
if(NOT EMULATOR STREQUAL "")
  run_in(${source} fails ${configure})
  expect_words("set CMAKE_CROSSCOMPILING_EMULATOR to what runs")
endif()
run_in(${source} works ${configure} -DCMAKE_CROSSCOMPILING_EMULATOR=${EMULATOR})
run_in(${source} works ${CMAKE_COMMAND} --build --preset kivara-release)

# expect_files(FOLDER file...): what lies below the folder, but for DLLs and programs of the folder itself.
function(expect_files folder)
  file(GLOB_RECURSE files RELATIVE ${folder} ${folder}/*)
  list(FILTER files EXCLUDE REGEX "^[^/]*[.](dll|exe)$")
  list(SORT files)
  if(NOT files STREQUAL ARGN)
    message(SEND_ERROR "in ${folder} lie ${files}, expected were ${ARGN}")
  endif()
endfunction()

# The same lies beside the program in the build and in the installation.
set(beside agfx.zip data/prices.txt lang.ini language/1031/kivara72.dll language/1031/orders72.dll language/2057/kivara72.dll
  language/2057/kivml.dll language/2057/orders72.dll)
foreach(file IN LISTS beside)
  if(NOT EXISTS ${build}/${file})
    message(SEND_ERROR "${file} is not beside the program that was built")
  endif()
endforeach()
run_in(${source} works ${CMAKE_COMMAND} --install ${build} --prefix ${shipped})
expect_files(${shipped}/bin .debug/orders.exe.debug ${beside})
expect_files(${shipped}/share/doc/kivara notices/NOTICES.txt notices/gcc-runtime.txt notices/libdwarf.txt notices/minizip.txt notices/openssl.txt notices/tre.txt
  notices/winpthreads.txt notices/zlib.txt)

run_in(${source} works ${EMULATOR} ${shipped}/bin/orders.exe)
expect_words("2057 milestone 17, activity 0")
expect_words("own string.hpp, headers ${IDENTIFIER} match: 1, drawn: 1 1")
run_in(${source} works ${EMULATOR} ${build}/outdated.exe)

# A text that changed is beside the program after the next build, though the program itself did not change; what was packed stays.
file(READ ${source}/texts/orders.rc text)
string(REPLACE "100 €" "200 €" text "${text}")
file(WRITE ${source}/texts/orders.rc "${text}")
run_in(${source} works ${CMAKE_COMMAND} --build --preset kivara-release)
file(SHA256 ${build}/texts/language/1031/orders72.dll made)
file(SHA256 ${build}/language/1031/orders72.dll copied)
if(NOT made STREQUAL copied)
  message(SEND_ERROR "the texts beside the program are those from before they changed")
endif()
