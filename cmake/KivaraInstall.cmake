# What users get, and where it goes. Only what is shipped by name is installed.
#
#   bin/                    DLLs with the compiler's runtime, tools; .debug/ holds their debug symbols, where debuggers look
#   bin/language/ID/        language packs, and words that are recognised in every language; bin/lang.ini lists the languages, bin/agfx.zip holds the pictures
#   include/kivara/         the public headers of the library and of the toolkit
#   lib/, lib/cmake/kivara/ import libraries, kivara::main, the CMake package with the toolchain file
#   share/doc/kivara/       pages, API pages (api/), sources of the samples (apps/), changes, and the notices of what others wrote

set(KIVARA_PACKAGE_DIR lib/cmake/kivara)
add_custom_target(kivara_shipped)

# kivara_ship(TARGET [EXPORT_NAME name] [WITH_PROGRAMS]): installs a library, a program, or a DLL of resources, the last in the same
# place below bin as in the build. Libraries become targets kivara::NAME of the CMake package. WITH_PROGRAMS: kivara_copy_dlls puts the
# DLL of resources beside users' programs.
function(kivara_ship name)
  cmake_parse_arguments(arg "WITH_PROGRAMS" "EXPORT_NAME" "" ${ARGN})
  get_target_property(type ${name} TYPE)
  if(type STREQUAL MODULE_LIBRARY)
    get_target_property(folder ${name} LIBRARY_OUTPUT_DIRECTORY)
    cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    install(TARGETS ${name} LIBRARY DESTINATION bin/${folder})
    if(arg_WITH_PROGRAMS)
      get_target_property(file ${name} OUTPUT_NAME)
      set_property(GLOBAL APPEND PROPERTY KIVARA_PROGRAM_PACKS ${folder}/${file}.dll)
    endif()
  elseif(type STREQUAL EXECUTABLE)
    install(TARGETS ${name} RUNTIME DESTINATION bin)
  else()
    if(arg_EXPORT_NAME)
      set_target_properties(${name} PROPERTIES EXPORT_NAME ${arg_EXPORT_NAME})
    endif()
    install(TARGETS ${name} EXPORT kivaraTargets
      RUNTIME DESTINATION bin
      ARCHIVE DESTINATION lib
      INCLUDES DESTINATION include/kivara)
  endif()
  if(type STREQUAL EXECUTABLE OR type STREQUAL SHARED_LIBRARY)
    kivara_split_symbols(${name})
  endif()
  if(NOT type STREQUAL INTERFACE_LIBRARY)
    add_dependencies(kivara_shipped ${name})
  endif()
endfunction()

# kivara_ship_file(FILE [WITH_PROGRAMS]): installs a file that the build made, by its place below the folder of the programs.
# WITH_PROGRAMS: kivara_copy_dlls puts it beside those of users' programs that bring no file of that name.
function(kivara_ship_file file)
  cmake_parse_arguments(arg "WITH_PROGRAMS" "" "" ${ARGN})
  if(arg_WITH_PROGRAMS)
    set_property(GLOBAL APPEND PROPERTY KIVARA_PROGRAM_FILES ${file})
  endif()
  cmake_path(GET file PARENT_PATH folder)
  install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${file} DESTINATION bin/${folder})
endfunction()

# kivara_ship_headers(FOLDER): installs the headers of a folder whose headers are all public, with its folders and what they include.
function(kivara_ship_headers folder)
  install(CODE "set(KIVARA_HEADERS \"${folder}\")")
  install(SCRIPT ${KIVARA_CMAKE_DIR}/install-headers.cmake)
endfunction()

# kivara_ship_sample(FOLDER): installs the sources of a project on the installed package.
function(kivara_ship_sample folder)
  install(DIRECTORY ${folder} DESTINATION share/doc/kivara/apps)
endfunction()

# kivara_notice(NAME FILES path... WHAT text): the notice of something that others wrote and that our binaries hold or come with.
# The paths count from the prefixes where packages are found, and from /usr.
function(kivara_notice name)
  cmake_parse_arguments(arg "" "WHAT" "FILES" ${ARGN})
  find_file(KIVARA_NOTICE_${name} NAMES ${arg_FILES} NO_CMAKE_FIND_ROOT_PATH
    PATHS ${CMAKE_FIND_ROOT_PATH} ${CMAKE_PREFIX_PATH} $ENV{MINGW_PREFIX} /usr)
  mark_as_advanced(KIVARA_NOTICE_${name})
  if(NOT KIVARA_NOTICE_${name})
    install(CODE "message(FATAL_ERROR \"The notice of ${name} is missing, and nothing is shipped without it: \
set KIVARA_NOTICE_${name} to its file.\")")
    return()
  endif()
  install(FILES ${KIVARA_NOTICE_${name}} DESTINATION share/doc/kivara/notices RENAME ${name}.txt)
  set_property(GLOBAL APPEND_STRING PROPERTY KIVARA_NOTICES "${name}.txt: ${arg_WHAT}\n")
endfunction()

# kivara_api_pages(): makes and installs the pages of the public headers. Their warnings are for ./dev docs.
function(kivara_api_pages)
  find_program(KIVARA_DOXYGEN doxygen NO_CMAKE_FIND_ROOT_PATH)
  mark_as_advanced(KIVARA_DOXYGEN)
  if(NOT KIVARA_DOXYGEN)
    install(CODE "message(WARNING \"There is no doxygen: the API pages are left out.\")")
    return()
  endif()
  set(pages ${PROJECT_BINARY_DIR}/package/api)
  file(CONFIGURE OUTPUT ${pages}/Doxyfile
    CONTENT "@INCLUDE = docs/Doxyfile\nOUTPUT_DIRECTORY = ${pages}\nWARN_AS_ERROR = NO\nWARNINGS = NO\n")
  # Their folders are read as wholes.
  file(GLOB_RECURSE read CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/* ${PROJECT_SOURCE_DIR}/kivara/include/*.hpp
    ${PROJECT_SOURCE_DIR}/toolkit/re00005/include/*.hpp ${PROJECT_SOURCE_DIR}/toolkit/sv0105/include/*.hpp)
  add_custom_command(
    OUTPUT ${pages}/html/index.html
    COMMAND ${KIVARA_DOXYGEN} ${pages}/Doxyfile
    DEPENDS ${read} ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "Making the API pages"
    VERBATIM)
  add_custom_target(kivara_api_pages ALL DEPENDS ${pages}/html/index.html)
  add_dependencies(kivara_shipped kivara_api_pages)
  install(DIRECTORY ${pages}/html/ DESTINATION share/doc/kivara/api)
endfunction()

# kivara_package(): the rest, once everything is shipped: runtime, package files, documents, and the archive that cpack makes.
function(kivara_package)
  include(CMakePackageConfigHelpers)
  set(work ${PROJECT_BINARY_DIR}/package)
  set(KIVARA_RUNTIME_NAMES ${KIVARA_RUNTIME_DLLS})
  list(TRANSFORM KIVARA_RUNTIME_NAMES REPLACE ".*/" "")
  get_property(KIVARA_PROGRAM_PACKS GLOBAL PROPERTY KIVARA_PROGRAM_PACKS)
  get_property(KIVARA_PROGRAM_FILES GLOBAL PROPERTY KIVARA_PROGRAM_FILES)
  configure_package_config_file(${KIVARA_CMAKE_DIR}/package/kivaraConfig.cmake.in ${work}/kivaraConfig.cmake
    INSTALL_DESTINATION ${KIVARA_PACKAGE_DIR})
  file(READ ${KIVARA_CMAKE_DIR}/toolchain-mingw64.cmake toolchain)
  file(READ ${KIVARA_CMAKE_DIR}/package/toolchain-end.cmake toolchain_end)
  file(CONFIGURE OUTPUT ${work}/toolchain-mingw64.cmake CONTENT "${toolchain}\n${toolchain_end}" @ONLY)
  get_property(notices GLOBAL PROPERTY KIVARA_NOTICES)
  file(CONFIGURE OUTPUT ${work}/NOTICES.txt CONTENT "What others wrote, and these binaries hold or come with:\n\n${notices}" @ONLY)

  install(FILES ${KIVARA_RUNTIME_DLLS} DESTINATION bin)
  foreach(dll IN LISTS KIVARA_RUNTIME_DLLS)
    kivara_split_symbols_of_file(${dll} bin ${KIVARA_FILE_ALIGNMENT})
  endforeach()
  install(EXPORT kivaraTargets NAMESPACE kivara:: DESTINATION ${KIVARA_PACKAGE_DIR})
  install(FILES
      ${work}/kivaraConfig.cmake
      ${kivara_DIR}/kivaraConfigVersion.cmake
      ${work}/toolchain-mingw64.cmake
      ${KIVARA_CMAKE_DIR}/KivaraCompiler.cmake
      ${KIVARA_CMAKE_DIR}/KivaraPlugins.cmake
      ${KIVARA_CMAKE_DIR}/KivaraResources.cmake
      ${KIVARA_CMAKE_DIR}/KivaraSymbols.cmake
      ${KIVARA_CMAKE_DIR}/KivaraVersionInfo.cmake
      ${KIVARA_CMAKE_DIR}/package/KivaraDeploy.cmake
      ${KIVARA_CMAKE_DIR}/package/copy-missing.cmake
      ${KIVARA_CMAKE_DIR}/package/presets.json
      ${KIVARA_CMAKE_DIR}/plugin.cpp.in
      ${KIVARA_CMAKE_DIR}/program.manifest
      ${KIVARA_CMAKE_DIR}/program.rc
      ${KIVARA_CMAKE_DIR}/split-symbols.cmake
      ${KIVARA_CMAKE_DIR}/version.rc.in
    DESTINATION ${KIVARA_PACKAGE_DIR})
  install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/README.md DESTINATION share/doc/kivara)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION share/doc/kivara
    FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.svg")
  kivara_api_pages()
  install(FILES ${work}/NOTICES.txt DESTINATION share/doc/kivara/notices)

  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_VENDOR kivara)
  set(CPACK_PACKAGE_FILE_NAME kivara-${PROJECT_VERSION}-win64)
  include(CPack)
endfunction()
