# Installs the build into a folder of its own and uses it from there as others do: by CMake's
# package, by pkg-config and by the program; then looks into the package. Called with -D BUILD, SOURCE,
# WORK, COMPILER.

function(run output)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE text ERROR_VARIABLE errors
    RESULT_VARIABLE status OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN} ended with ${status}:\n${text}\n${errors}")
  endif()
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

function(expect what text expected)
  if(NOT text STREQUAL expected)
    message(FATAL_ERROR "${what}: \"${text}\" instead of \"${expected}\"")
  endif()
endfunction()

function(expect_job file)
  file(READ ${file} bytes HEX)
  string(LENGTH "${bytes}" digits)
  if(NOT bytes MATCHES "^1b252d313233343558.*1b45.*1b252d313233343558$" OR digits LESS 200)
    message(FATAL_ERROR "${file} is not the framed job: ${bytes}")
  endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
run(ignored ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/usr)

run(ignored ${CMAKE_COMMAND} -S ${SOURCE}/tests/consumer -B ${WORK}/cmake -G Ninja
  -D CMAKE_PREFIX_PATH=${WORK}/usr)
run(ignored ${CMAKE_COMMAND} --build ${WORK}/cmake)
run(ignored ${WORK}/cmake/consumer_c ${WORK}/by-cmake)
expect_job(${WORK}/by-cmake)
run(version ${WORK}/cmake/consumer_cpp)
expect("version" "${version}" 830)

# The same from a tree that was moved.
file(RENAME ${WORK}/usr ${WORK}/moved)
set(ENV{PKG_CONFIG_PATH} ${WORK}/moved/lib/pkgconfig)
run(flags pkg-config --cflags --libs hvapi)
separate_arguments(flags UNIX_COMMAND "${flags}")
run(ignored ${COMPILER} -std=c99 -o ${WORK}/consumer ${SOURCE}/tests/consumer/consumer.c ${flags}
  -Wl,-rpath,${WORK}/moved/lib)
run(ignored ${WORK}/consumer ${WORK}/by-pkgconfig)
expect_job(${WORK}/by-pkgconfig)
run(version ${WORK}/moved/bin/hvapi --version)
expect("hvapi --version" "${version}" "hvapi 8.3")

include(${SOURCE}/cmake/pkgconfig.cmake)
hvapi_write_pkgconfig(${WORK}/absolute/hvapi.pc /usr /opt/hv/lib /opt/hv/include 8.3)
set(ENV{PKG_CONFIG_PATH} ${WORK}/absolute)
run(flags pkg-config --cflags --libs hvapi)
expect("absolute directories" "${flags}" "-I/opt/hv/include -L/opt/hv/lib -lHvApiW32")

run(ignored ${CMAKE_COMMAND} -E chdir ${WORK} cpack --config ${BUILD}/CPackConfig.cmake -G DEB)
file(GLOB package ${WORK}/*.deb)
run(listing dpkg-deb --contents ${package})
foreach(file bin/hvapi include/hvapi.h include/hvapi/zip.h lib/libHvApiW32.so lib/cmake/HvApi/HvApiConfig.cmake
    lib/pkgconfig/hvapi.pc share/man/man1/hvapi.1 share/man/man3/hvapi.3
    share/bash-completion/completions/hvapi
    share/zsh/vendor-completions/_hvapi share/fish/vendor_completions.d/hvapi.fish)
  if(NOT listing MATCHES "\\./usr/${file}\n|\\./usr/${file}$")
    message(FATAL_ERROR "${package} lacks usr/${file}:\n${listing}")
  endif()
endforeach()
run(depends dpkg-deb --field ${package} Depends)
if(NOT depends MATCHES "libc6" OR depends MATCHES "cups")
  message(FATAL_ERROR "${package} depends on: ${depends}")
endif()
