# cmake -DFROM=file -DTO=file -P copy-missing.cmake: copies a file unless there is one of that name already.
if(NOT EXISTS ${TO})
  file(COPY_FILE ${FROM} ${TO})
endif()
