# kivara_copy_dlls(PROGRAM): puts what the program loads into its folder whenever it is linked: the DLLs that it links, the
# compiler's runtime, the library's language packs and other files of its own.
function(kivara_copy_dlls program)
  set(folder $<TARGET_FILE_DIR:${program}>)
  set(runtime ${KIVARA_RUNTIME_NAMES})
  list(TRANSFORM runtime PREPEND ${KIVARA_BIN_DIR}/)
  add_custom_command(TARGET ${program} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_RUNTIME_DLLS:${program}> ${runtime} ${folder}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${KIVARA_BIN_DIR}/language ${folder}/language
    COMMAND_EXPAND_LISTS VERBATIM)
  foreach(file IN LISTS KIVARA_SHIPPED_FILES)
    add_custom_command(TARGET ${program} POST_BUILD
      COMMAND ${CMAKE_COMMAND} -E copy_if_different ${KIVARA_BIN_DIR}/${file} ${folder}/${file} VERBATIM)
  endforeach()
endfunction()
