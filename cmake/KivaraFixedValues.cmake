# The values that all copies of the library share, as hexadecimal digits, two for each byte in their order. An owner of
# existing data builds with the old ones (docs/ciphers.md).

set(KIVARA_DES_KEY 4b1f92e6c85d30a7 CACHE STRING "DES key of the old text form: 8 bytes")
set(KIVARA_AES_KEY 9c0e57b1f2486ad3713ce890254fba6d18d7a45e03c97bf66285df1a4e90b73c CACHE STRING
  "AES key of the text form: 32 bytes")
set(KIVARA_AES_VECTOR e35a2c81970fd46b48b61d9350fa7ec2 CACHE STRING "Initial vector of the AES text form: 16 bytes")
set(KIVARA_REPORT_KEY 5a CACHE STRING "Combined with each byte of a crash report: 1 byte")
set(KIVARA_STRING_MASK a7 CACHE STRING "Combined with each byte of a text in kivml.dll: 1 byte")
mark_as_advanced(KIVARA_DES_KEY KIVARA_AES_KEY KIVARA_AES_VECTOR KIVARA_REPORT_KEY KIVARA_STRING_MASK)

function(kivara_check_bytes variable count)
  string(LENGTH "${${variable}}" digits)
  math(EXPR wanted "${count} * 2")
  if(NOT digits EQUAL wanted OR NOT "${${variable}}" MATCHES "^[0-9A-Fa-f]*$")
    message(FATAL_ERROR "${variable} must be ${wanted} hexadecimal digits, two for each byte; it is \"${${variable}}\".")
  endif()
endfunction()

kivara_check_bytes(KIVARA_DES_KEY 8)
kivara_check_bytes(KIVARA_AES_KEY 32)
kivara_check_bytes(KIVARA_AES_VECTOR 16)
kivara_check_bytes(KIVARA_REPORT_KEY 1)
kivara_check_bytes(KIVARA_STRING_MASK 1)
