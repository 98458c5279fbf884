# Builds the target "package" of a bare project that finds no Python: it is to fail and to say what is
# missing.
#   SOURCE     the tree
#   GENERATOR  of build files
#   SCRATCH    a folder for it
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${SCRATCH})
file(WRITE ${SCRATCH}/CMakeLists.txt "cmake_minimum_required(VERSION 3.25)
project(bare VERSION 1.0.0 LANGUAGES NONE)
include(${SOURCE}/tools/package.cmake)
")
execute_process(
  COMMAND ${CMAKE_COMMAND} -G ${GENERATOR} -S ${SCRATCH} -B ${SCRATCH}/build
          -DCMAKE_DISABLE_FIND_PACKAGE_Python3=ON
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${SCRATCH}/build --target package
  RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE said)
if(status EQUAL 0)
  message(FATAL_ERROR "The target succeeds without Python.")
endif()
if(NOT said MATCHES "Python 3, which is missing [(]python3 in Debian[)]")
  message(FATAL_ERROR "It does not say what is missing:\n${said}")
endif()
