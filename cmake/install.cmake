# What is installed, and the packages made of it: the headers, the library with what CMake and
# pkg-config need to find it, the program, the manual pages and the completion of the shells.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
include(${CMAKE_CURRENT_LIST_DIR}/pkgconfig.cmake)

set(HVAPI_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/HvApi)
install(TARGETS HvApiW32 EXPORT HvApiTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${CMAKE_SOURCE_DIR}/src/api/hvapi.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/src/api/hvapi DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT HvApiTargets NAMESPACE HvApi:: DESTINATION ${HVAPI_CMAKE_DIR})
file(WRITE ${CMAKE_BINARY_DIR}/HvApiConfig.cmake
  "include(\"\${CMAKE_CURRENT_LIST_DIR}/HvApiTargets.cmake\")\n")
write_basic_package_version_file(${CMAKE_BINARY_DIR}/HvApiConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/HvApiConfig.cmake ${CMAKE_BINARY_DIR}/HvApiConfigVersion.cmake
  DESTINATION ${HVAPI_CMAKE_DIR})

hvapi_write_pkgconfig(${CMAKE_BINARY_DIR}/hvapi.pc ${CMAKE_INSTALL_PREFIX}
  ${CMAKE_INSTALL_LIBDIR} ${CMAKE_INSTALL_INCLUDEDIR} ${PROJECT_VERSION})
install(FILES ${CMAKE_BINARY_DIR}/hvapi.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The program finds the library beside it or where it is installed.
file(RELATIVE_PATH library_dir ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(hvapi PROPERTIES INSTALL_RPATH "$ORIGIN/${library_dir}")
install(TARGETS hvapi RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# The program writes these itself, where it can run.
if(NOT CMAKE_CROSSCOMPILING)
  set(pages ${CMAKE_BINARY_DIR}/pages)
  file(MAKE_DIRECTORY ${pages})
  add_custom_command(
    OUTPUT ${pages}/hvapi.1 ${pages}/hvapi ${pages}/_hvapi ${pages}/hvapi.fish
    COMMAND hvapi manual > ${pages}/hvapi.1
    COMMAND hvapi completion bash > ${pages}/hvapi
    COMMAND hvapi completion zsh > ${pages}/_hvapi
    COMMAND hvapi completion fish > ${pages}/hvapi.fish
    DEPENDS hvapi
    VERBATIM)
  file(GLOB headers CONFIGURE_DEPENDS src/api/hvapi/*.h)
  add_custom_command(
    OUTPUT ${pages}/hvapi.3
    COMMAND ${CMAKE_COMMAND} -D API=${CMAKE_SOURCE_DIR}/src/api -D VERSION=${PROJECT_VERSION}
      -D PAGE=${pages}/hvapi.3 -P ${CMAKE_CURRENT_LIST_DIR}/api_page.cmake
    DEPENDS src/api/hvapi.h ${headers} ${CMAKE_CURRENT_LIST_DIR}/api_page.cmake
    VERBATIM)
  add_custom_target(hvapi_pages ALL DEPENDS ${pages}/hvapi.1 ${pages}/hvapi.3)
  install(FILES ${pages}/hvapi.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${pages}/hvapi.3 DESTINATION ${CMAKE_INSTALL_MANDIR}/man3)
  install(FILES ${pages}/hvapi DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${pages}/_hvapi DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
  install(FILES ${pages}/hvapi.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endif()

set(CPACK_PACKAGE_NAME hvapi)
set(CPACK_PACKAGE_VENDOR "The HvApi developers")
set(CPACK_PACKAGE_CONTACT "The HvApi developers <hvapi@example.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "prepare files for page printers and send them")
set(CPACK_PACKAGE_DESCRIPTION
  "A library of C functions and the program hvapi: jobs in PJL and ESC [ K frames, downloads of fonts and\
 macros, font metrics, configuration files of printer utilities, printer replies, font archives.")
set(CPACK_STRIP_FILES ON)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION utils)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  # Loaded when it is there.
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS libcups2)
endif()
include(CPack)
