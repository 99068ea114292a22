# kivara_copy_dlls(PROGRAM): puts what the program loads into its folder whenever it is linked: the DLLs that it links, the
# compiler's runtime, and the library's language packs.
function(kivara_copy_dlls program)
  set(runtime ${KIVARA_RUNTIME_NAMES})
  list(TRANSFORM runtime PREPEND ${KIVARA_BIN_DIR}/)
  add_custom_command(TARGET ${program} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_RUNTIME_DLLS:${program}> ${runtime} $<TARGET_FILE_DIR:${program}>
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${KIVARA_BIN_DIR}/language $<TARGET_FILE_DIR:${program}>/language
    COMMAND_EXPAND_LISTS VERBATIM)
endfunction()
