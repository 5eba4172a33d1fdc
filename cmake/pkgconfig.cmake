# Writes hvapi.pc. Directories under the prefix are named from where the file lies, so that the tree
# can be moved or installed elsewhere; absolute ones stand as they are.
function(hvapi_write_pkgconfig output prefix libdir includedir version)
  if(IS_ABSOLUTE "${libdir}")
    set(root "${prefix}")
  else()
    file(RELATIVE_PATH up "${prefix}/${libdir}/pkgconfig" "${prefix}")
    string(REGEX REPLACE "/$" "" root "\${pcfiledir}/${up}")
    set(libdir "\${prefix}/${libdir}")
  endif()
  if(NOT IS_ABSOLUTE "${includedir}")
    set(includedir "\${prefix}/${includedir}")
  endif()
  file(WRITE "${output}"
    "prefix=${root}\n"
    "libdir=${libdir}\n"
    "includedir=${includedir}\n"
    "\n"
    "Name: HvApiW32\n"
    "Description: Prepares files for page printers and sends them\n"
    "Version: ${version}\n"
    "Libs: -L\${libdir} -lHvApiW32\n"
    "Cflags: -I\${includedir}\n")
endfunction()
