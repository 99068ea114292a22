# configure_project(PROJECT FOLDER options...): configures a project against the installation; sets code and output.
macro(configure_project project folder)
  file(REMOVE_RECURSE ${folder})
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env --unset=CMAKE_PREFIX_PATH
      ${CMAKE_COMMAND} -G Ninja -S ${project} -B ${folder} -DCMAKE_BUILD_TYPE=Release
        -DCMAKE_TOOLCHAIN_FILE=${INSTALLED}/lib/cmake/kivara/toolchain-mingw64.cmake
        -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} ${ARGN}
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE code)
endmacro()
