# A program with all that it loads: beside it in the build, and in an installation that runs on a machine without any of this.

set(KIVARA_COPY_MISSING ${CMAKE_CURRENT_LIST_DIR}/copy-missing.cmake)

# The file of a target that is loaded at run time, and its folder below that of the program.
function(kivara_loaded_file target file place)
  set(${file} $<TARGET_FILE:${target}> PARENT_SCOPE)
  get_target_property(packed ${target} KIVARA_FILE)
  if(packed)
    set(${file} ${packed} PARENT_SCOPE)
  endif()
  get_target_property(folder ${target} KIVARA_PLACE)
  if(NOT folder)
    set(folder .)
  endif()
  set(${place} ${folder} PARENT_SCOPE)
endfunction()

# Copies a file into a folder below that of the program whenever the program is linked, which a changed file brings about.
function(kivara_copy_beside program file place)
  set(folder $<TARGET_FILE_DIR:${program}>/${place})
  set_property(TARGET ${program} APPEND PROPERTY LINK_DEPENDS ${file})
  add_custom_command(TARGET ${program} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${file} ${folder}
    VERBATIM)
endfunction()

# kivara_copy_dlls(PROGRAM [WITH target...] [FILES file...]): puts what the program loads into its folder whenever it is linked: the
# DLLs that it links, the compiler's runtime, the library's language packs, and a lang.ini and agfx.zip where it brings none. WITH names what it
# loads at run time, such as packs and DLLs of this project; FILES, counted from the folder of the project's file, keep their folders.
function(kivara_copy_dlls program)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "WITH;FILES")
  kivara_check_arguments("kivara_copy_dlls(${program})" arg)
  foreach(target IN LISTS arg_WITH)
    if(NOT TARGET ${target})
      message(FATAL_ERROR "kivara_copy_dlls(${program}): WITH names targets, and \"${target}\" is none so far.")
    endif()
    add_dependencies(${program} ${target})
    kivara_loaded_file(${target} file place)
    kivara_copy_beside(${program} ${file} "${place}")
  endforeach()
  foreach(file IN LISTS arg_FILES)
    cmake_path(GET file PARENT_PATH place)
    kivara_copy_beside(${program} ${CMAKE_CURRENT_SOURCE_DIR}/${file} "${place}")
  endforeach()

  set(folder $<TARGET_FILE_DIR:${program}>)
  add_custom_command(TARGET ${program} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_RUNTIME_DLLS:${program}> ${KIVARA_RUNTIME_DLLS} ${folder}
    COMMAND_EXPAND_LISTS VERBATIM)
  foreach(file IN LISTS KIVARA_PROGRAM_PACKS)
    cmake_path(GET file PARENT_PATH place)
    kivara_copy_beside(${program} ${KIVARA_BIN_DIR}/${file} "${place}")
  endforeach()
  foreach(file IN LISTS KIVARA_PROGRAM_FILES)
    add_custom_command(TARGET ${program} POST_BUILD
      COMMAND ${CMAKE_COMMAND} -DFROM=${KIVARA_BIN_DIR}/${file} -DTO=${folder}/${file} -P ${KIVARA_COPY_MISSING} VERBATIM)
  endforeach()
endfunction()

# kivara_deploy(PROGRAM [WITH target...] [FILES file...] [DESTINATION folder]): does what kivara_copy_dlls does, and installs the
# same: `cmake --install BUILD --prefix FOLDER` gives a folder that can be shipped, the program in DESTINATION, "bin" unless given,
# and the notices of what others wrote below share/doc/kivara.
function(kivara_deploy program)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESTINATION" "WITH;FILES")
  if(NOT DEFINED arg_DESTINATION)
    set(arg_DESTINATION bin)
  endif()
  kivara_check_arguments("kivara_deploy(${program})" arg DESTINATION)
  kivara_copy_dlls(${program} WITH ${arg_WITH} FILES ${arg_FILES})

  install(TARGETS ${program} RUNTIME DESTINATION ${arg_DESTINATION})
  install(FILES $<TARGET_RUNTIME_DLLS:${program}> ${KIVARA_RUNTIME_DLLS} DESTINATION ${arg_DESTINATION})
  foreach(target IN LISTS arg_WITH)
    kivara_loaded_file(${target} file place)
    install(FILES ${file} DESTINATION ${arg_DESTINATION}/${place})
  endforeach()
  foreach(file IN LISTS arg_FILES)
    cmake_path(GET file PARENT_PATH place)
    install(FILES ${file} DESTINATION ${arg_DESTINATION}/${place})
  endforeach()
  foreach(file IN LISTS KIVARA_PROGRAM_PACKS)
    cmake_path(GET file PARENT_PATH place)
    install(FILES ${KIVARA_BIN_DIR}/${file} DESTINATION ${arg_DESTINATION}/${place})
  endforeach()
  # The project's own ones lie beside the program too.
  foreach(file IN LISTS KIVARA_PROGRAM_FILES)
    cmake_path(GET file PARENT_PATH place)
    install(FILES $<TARGET_FILE_DIR:${program}>/${file} DESTINATION ${arg_DESTINATION}/${place})
  endforeach()
  install(DIRECTORY ${KIVARA_NOTICES_DIR} DESTINATION share/doc/kivara)
endfunction()
