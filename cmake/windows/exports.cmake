# Writes a module definition file that exports each function that the headers of a folder declare with
# HVAPI_EXPORT, by its stdcall name: the bytes of its arguments, 4 each, stand behind "@". The
# linker refuses a name whose function takes another number of bytes, and --kill-at takes the
# decoration off in the export table.
#
# Usage: cmake -D HEADERS=FOLDER -D DEFINITIONS=... -P exports.cmake

file(GLOB headers ${HEADERS}/*.h)
set(text "")
foreach(header IN LISTS headers)
  file(READ ${header} part)
  string(APPEND text "${part}")
endforeach()
# A list of CMake must not break at the semicolons.
string(REPLACE ";" "$" text "${text}")
string(REGEX MATCHALL "HVAPI_EXPORT [^$]*HVAPI_CALL[ \n]+[A-Za-z0-9_]+\\([^$]*\\)\\$" declarations
       "${text}")

set(names "")
foreach(declaration IN LISTS declarations)
  string(REGEX MATCH "HVAPI_CALL[ \n]+([A-Za-z0-9_]+)\\((.*)\\)" match "${declaration}")
  set(name ${CMAKE_MATCH_1})
  set(arguments "${CMAKE_MATCH_2}")
  set(bytes 0)
  if(NOT arguments STREQUAL "void")
    string(REGEX MATCHALL "," commas "${arguments}")
    list(LENGTH commas count)
    math(EXPR bytes "4 * (${count} + 1)")
  endif()
  list(APPEND names "  ${name}@${bytes}")
endforeach()

list(LENGTH names count)
if(count EQUAL 0)
  message(FATAL_ERROR "${HEADERS} declares no export.")
endif()
list(JOIN names "\n" lines)
file(WRITE ${DEFINITIONS} "EXPORTS\n${lines}\n")
