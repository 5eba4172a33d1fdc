# A package of headers alone serves every target. Its folder is linked into a folder of the build
# tree, so that no other header of this machine comes into reach of a cross compiler.

function(hvapi_host_headers target folder)
  find_path(HVAPI_${folder}_PARENT ${folder} NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  set(headers ${CMAKE_BINARY_DIR}/host_headers)
  file(MAKE_DIRECTORY ${headers})
  file(CREATE_LINK ${HVAPI_${folder}_PARENT}/${folder} ${headers}/${folder} SYMBOLIC)
  if(NOT TARGET ${target})
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} SYSTEM INTERFACE ${headers})
  endif()
endfunction()
