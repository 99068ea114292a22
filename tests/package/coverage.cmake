# The table of `./dev coverage`, from counts that are given.

set(head "filename,line_total,line_covered,line_percent,branch_total,branch_covered,branch_percent\n")

function(expect_table what rows expected)
  file(WRITE ${WORK}/coverage.csv "${head}${rows}")
  execute_process(COMMAND bash -c "source '${SOURCE}/scripts/coverage.sh'; lines_per_folder '${WORK}/coverage.csv' | cat"
    OUTPUT_VARIABLE table ERROR_VARIABLE errors)
  if(NOT table STREQUAL expected OR NOT errors STREQUAL "")
    message(SEND_ERROR "${what}: expected\n${expected}but there is\n${table}${errors}")
  endif()
endfunction()

expect_table("folders are added up, files of less than 90 % named"
"toolkit/tl0105/date.cpp,10,9,0.9,0,0,0
kivara/text/tools/atools.cpp,30,10,0.333,8,4,0.5
kivara/text/tools/atools_keys.cpp,70,70,1.0,8,4,0.5
kivara/frame/aapp.cpp,1000,899,0.899,8,4,0.5
"
"  89.9 %    1000 lines  kivara/frame
  80.0 %     100 lines  kivara/text/tools
  90.0 %      10 lines  toolkit/tl0105
  89.0 %    1100 lines  all of kivara/
  90.0 %      10 lines  all of toolkit/
  89.0 %    1110 lines  in all
files below 90 %:
  89.9 %    1000 lines  kivara/frame/aapp.cpp
  33.3 %      30 lines  kivara/text/tools/atools.cpp
")

expect_table("no file is below 90 %, and a file without code counts as run"
"kivara/ui/drawing/acolor.cpp,10,10,1.0,0,0,0
kivara/include/kivara.hpp,0,0,,0,0,0
"
" 100.0 %       0 lines  kivara/include
 100.0 %      10 lines  kivara/ui/drawing
 100.0 %      10 lines  all of kivara/
 100.0 %      10 lines  in all
files below 90 %: none
")
