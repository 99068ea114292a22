# kivara_copy_dlls(PROGRAM): puts what the program loads into its folder whenever it is linked: the DLLs that it links, the
# compiler's runtime and the library's language packs; and the library's lang.ini where the program brings none.
set(KIVARA_COPY_MISSING ${CMAKE_CURRENT_LIST_DIR}/copy-missing.cmake)

function(kivara_copy_dlls program)
  set(folder $<TARGET_FILE_DIR:${program}>)
  set(runtime ${KIVARA_RUNTIME_NAMES})
  list(TRANSFORM runtime PREPEND ${KIVARA_BIN_DIR}/)
  add_custom_command(TARGET ${program} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_RUNTIME_DLLS:${program}> ${runtime} ${folder}
    COMMAND_EXPAND_LISTS VERBATIM)
  foreach(file IN LISTS KIVARA_PROGRAM_PACKS)
    cmake_path(GET file PARENT_PATH pack_folder)
    add_custom_command(TARGET ${program} POST_BUILD
      COMMAND ${CMAKE_COMMAND} -E make_directory ${folder}/${pack_folder}
      COMMAND ${CMAKE_COMMAND} -E copy_if_different ${KIVARA_BIN_DIR}/${file} ${folder}/${file} VERBATIM)
  endforeach()
  foreach(file IN LISTS KIVARA_PROGRAM_FILES)
    add_custom_command(TARGET ${program} POST_BUILD
      COMMAND ${CMAKE_COMMAND} -DFROM=${KIVARA_BIN_DIR}/${file} -DTO=${folder}/${file} -P ${KIVARA_COPY_MISSING} VERBATIM)
  endforeach()
endfunction()
