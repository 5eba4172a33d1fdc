# HvApiW32.dll: its export table, its import library and its version resource.

enable_language(RC)

file(GLOB headers CONFIGURE_DEPENDS src/api/hvapi/*.h)
set(definitions ${CMAKE_BINARY_DIR}/HvApiW32.def)
add_custom_command(
  OUTPUT ${definitions}
  COMMAND ${CMAKE_COMMAND} -D HEADERS=${CMAKE_SOURCE_DIR}/src/api/hvapi
    -D DEFINITIONS=${definitions} -P ${CMAKE_CURRENT_LIST_DIR}/exports.cmake
  DEPENDS ${headers} ${CMAKE_CURRENT_LIST_DIR}/exports.cmake
  VERBATIM)

target_sources(HvApiW32 PRIVATE ${definitions} src/platform/windows/version.rc)
set_target_properties(HvApiW32 PROPERTIES PREFIX "")
# Names are exported without the decoration of their calling convention.
target_link_options(HvApiW32 PRIVATE LINKER:--kill-at)

# Clients are compiled to call the decorated names; an import library that leads from these to the
# plain ones takes the place of the linker's, which has the plain ones on both sides.
add_custom_command(TARGET HvApiW32 POST_BUILD
  COMMAND ${CMAKE_DLLTOOL} --kill-at --input-def ${definitions}
    --dllname $<TARGET_FILE_NAME:HvApiW32> --output-lib $<TARGET_LINKER_FILE:HvApiW32>
  VERBATIM)
