# Writes hvapi(3), the page of all functions: the conventions of hvapi.h, and of the headers of the
# families the first sentence on each function.
#
# Usage: cmake -D API=FOLDER -D VERSION=... -D PAGE=... -P api_page.cmake

# A text as troff takes it, on one line; comments of several lines have a star before each.
function(set_text variable text)
  string(REGEX REPLACE "\n \\*?" " " text "${text}")
  string(REGEX REPLACE " +" " " text "${text}")
  string(STRIP "${text}" text)
  string(REPLACE "`" "" text "${text}")
  string(REPLACE "\\" "\\e" text "${text}")
  string(REPLACE "-" "\\-" text "${text}")
  set(${variable} "${text}" PARENT_SCOPE)
endfunction()

# Without what would break a list of CMake.
string(ASCII 1 semicolon)
string(ASCII 2 opening)
string(ASCII 3 closing)
function(read_header variable name)
  file(READ ${API}/${name} text)
  string(REPLACE ";" "${semicolon}" text "${text}")
  string(REPLACE "[" "${opening}" text "${text}")
  string(REPLACE "]" "${closing}" text "${text}")
  set(${variable} "${text}" PARENT_SCOPE)
endfunction()

read_header(chief hvapi.h)
string(REGEX MATCH "here keeps:\n(.*)\n \\*\n \\* Records are([^/]*)\\*/" match "${chief}")
set(conventions "${CMAKE_MATCH_1}")
set_text(records "Records are${CMAKE_MATCH_2}")
string(REGEX REPLACE "\n \\*  ([0-9]+\\.)" ";\\1" conventions "${conventions}")

set(page ".TH HVAPI 3 \"\" \"hvapi ${VERSION}\" \"Library Functions\"
.SH NAME
hvapi \\- send jobs to page printers and prepare their files
.SH SYNOPSIS
.B #include <hvapi.h>
.PP
.B cc program.c $(pkg\\-config \\-\\-cflags \\-\\-libs hvapi)
.SH DESCRIPTION
All functions keep these conventions:
")
foreach(convention IN LISTS conventions)
  if(convention MATCHES "^([0-9]+\\.) (.*)")
    set(number ${CMAKE_MATCH_1})
    set_text(text "${CMAKE_MATCH_2}")
    string(APPEND page ".IP ${number} 4\n${text}\n")
  endif()
endforeach()
string(APPEND page ".PP\n${records}\n.SH FUNCTIONS\n")

set(count 0)
string(REGEX MATCHALL "hvapi/[a-z_]+\\.h" families "${chief}")
foreach(family IN LISTS families)
  read_header(header ${family})
  string(REGEX MATCH "@file\n \\* ([^\n]*)\\.\n" match "${header}")
  set_text(title "${CMAKE_MATCH_1}")
  string(APPEND page ".SS ${title}\n")
  string(REPLACE "/**" ";" pieces "${header}")
  foreach(piece IN LISTS pieces)
    if(NOT piece MATCHES "^(.*)\\*/\nHVAPI_EXPORT [^(]*HVAPI_CALL (Hv[A-Za-z0-9]+)\\(")
      continue()
    endif()
    set(name ${CMAKE_MATCH_2})
    string(REGEX REPLACE "@.*" "" text "${CMAKE_MATCH_1}")
    set_text(text "${text}")
    string(REGEX REPLACE "\\. ([A-Z].*)" "." text "${text}")
    string(APPEND page ".TP\n.B ${name}\n${text}\n")
    math(EXPR count "${count} + 1")
  endforeach()
endforeach()
if(count EQUAL 0)
  message(FATAL_ERROR "The headers of ${API} declare no function.")
endif()

string(APPEND page ".SH SEE ALSO
.BR hvapi (1)
.PP
The headers describe each function, its arguments and its results.
")
string(REPLACE "${semicolon}" ";" page "${page}")
string(REPLACE "${opening}" "[" page "${page}")
string(REPLACE "${closing}" "]" page "${page}")
file(WRITE ${PAGE} "${page}")
