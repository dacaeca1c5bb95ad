# Installs the build into a fresh prefix, builds a small plug-in out of the tree through the CMake
# package and through pkg-config, compiles each installed header alone, and has the installed
# kavrel load both plug-ins from a configuration folder. Run by CTest with BUILD_DIR, SOURCE_DIR,
# WORK_DIR, LIBDIR and CXX set, and PLUGIN_FLAGS for what the compiler needs beyond the package's
# flags.
cmake_minimum_required(VERSION 3.25)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT rc EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "Failed (${rc}): ${command}\n${out}")
  endif()
  set(output "${out}" PARENT_SCOPE)
endfunction()

set(prefix ${WORK_DIR}/prefix)
set(config ${WORK_DIR}/config)
set(plugin ${SOURCE_DIR}/tests/plugins/outside)
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${config}/plugins)

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

# Through the CMake package; the prefix is the only place it may be found.
run(${CMAKE_COMMAND} -S ${plugin} -B ${WORK_DIR}/cmake-build -DCMAKE_CXX_COMPILER=${CXX}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS=${PLUGIN_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/cmake-build)
file(COPY ${WORK_DIR}/cmake-build/outside_cmake.so DESTINATION ${config}/plugins)

# Through pkg-config, with nothing but its flags.
find_program(PKG_CONFIG pkg-config REQUIRED)
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
set(ENV{PKG_CONFIG_LIBDIR} ${prefix}/${LIBDIR}/pkgconfig)
run(${PKG_CONFIG} --cflags kavrel)
separate_arguments(cflags UNIX_COMMAND "${output} ${PLUGIN_FLAGS}")
run(${CXX} ${cflags} -Wall -Wextra -Werror -shared -fPIC "-DKV_OUTSIDE_CLASS=\"Outside.PkgConfigPlugIn\""
    ${plugin}/OutsidePlugIn.cpp -o ${config}/plugins/outside_pkgconfig.so)

# Every installed header compiles on its own, with no other header before it.
file(GLOB headers RELATIVE ${prefix}/include ${prefix}/include/kavrel/*.h)
set(units)
foreach(header IN LISTS headers)
  string(MAKE_C_IDENTIFIER ${header} unit)
  file(WRITE ${WORK_DIR}/headers/${unit}.cpp "#include <${header}>\n")
  list(APPEND units ${WORK_DIR}/headers/${unit}.cpp)
endforeach()
run(${CXX} ${cflags} -Wall -Wextra -Werror -fsyntax-only ${units})

file(WRITE ${config}/kavrel.xml [[<KavrelConfiguration>
  <DocType Name="outside.cmake" PlugIn="Outside.CMakePlugIn"/>
  <DocType Name="outside.pkgconfig" PlugIn="Outside.PkgConfigPlugIn"/>
</KavrelConfiguration>
]])
run(${prefix}/bin/kavrel doctypes --config ${config})
foreach(expected "outside_cmake.so: loaded" "outside_pkgconfig.so: loaded" "Outside.CMakePlugIn: ok"
        "Outside.PkgConfigPlugIn: ok")
  string(FIND "${output}" "${expected}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "kavrel doctypes does not say \"${expected}\":\n${output}")
  endif()
endforeach()
message(STATUS "Both plug-ins built against the installed package load:\n${output}")
