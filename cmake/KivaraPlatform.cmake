# What every target is compiled with, and the one platform that is supported.

include(KivaraCompiler)
kivara_require_compiler("Configure with `cmake --preset release`.")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# Programs find their DLLs in their own folder, so everything that runs is built into one.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_SHARED_LIBRARY_PREFIX "")

find_program(KIVARA_CCACHE ccache)
if(KIVARA_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${KIVARA_CCACHE})
endif()
if(CMAKE_CROSSCOMPILING)
  set(CMAKE_CXX_LINKER_LAUNCHER ${CMAKE_CURRENT_LIST_DIR}/keep-import-library)
endif()

add_compile_options(
  $<$<COMPILE_LANGUAGE:CXX>:-Wall$<SEMICOLON>-Wextra$<SEMICOLON>-Wpedantic$<SEMICOLON>-Wshadow$<SEMICOLON>-Wnon-virtual-dtor$<SEMICOLON>-Woverloaded-virtual$<SEMICOLON>-Werror>)
add_compile_definitions(
  $<$<CONFIG:Debug>:KIVARA_DEBUG=1> _WIN32_WINNT=0x0A00 WINVER=0x0A00)

if(KIVARA_UBSAN)
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-fsanitize=undefined$<SEMICOLON>-fsanitize-undefined-trap-on-error>)
endif()
if(KIVARA_COVERAGE)
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:--coverage>)
  add_link_options(--coverage)
  add_compile_definitions(KIVARA_COVERAGE=1)
endif()

# Sections begin at whole pages of the file, so that they can be mapped. Wine reads the others into memory when a process starts, debug
# symbols included, and that was most of what our DLLs add to a start.
set(KIVARA_FILE_ALIGNMENT --file-alignment=0x1000)
add_link_options(-Wl,${KIVARA_FILE_ALIGNMENT})

# The compiler's shared runtime, copied beside the programs in the same form, without its debug symbols, which are ten times the rest.
foreach(dll IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
    OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT IS_ABSOLUTE "${path}")
    unset(path)
    find_file(KIVARA_RUNTIME_${dll} ${dll} PATHS /usr/x86_64-w64-mingw32/lib NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    set(path ${KIVARA_RUNTIME_${dll}})
  endif()
  list(APPEND KIVARA_RUNTIME_DLLS ${path})
  file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  execute_process(COMMAND ${CMAKE_OBJCOPY} --preserve-dates --strip-debug ${KIVARA_FILE_ALIGNMENT} ${path} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${dll}
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()
