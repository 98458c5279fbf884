# The target "package": the program, the command line, sounds and help in one zip.
find_package(Python3 COMPONENTS Interpreter)
if(Python3_Interpreter_FOUND)
  add_custom_target(package
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tools/package
            ${CMAKE_BINARY_DIR} ${CMAKE_SOURCE_DIR} ${PROJECT_VERSION}
    DEPENDS tessarin_ce tessarin_cli help_files
    USES_TERMINAL
    VERBATIM)
else()
  add_custom_target(package
    COMMAND ${CMAKE_COMMAND} -E echo
      "The package is packed by Python 3, which is missing (python3 in Debian). Install it, then configure anew: cmake --fresh --preset windows"
    COMMAND ${CMAKE_COMMAND} -E false
    COMMENT "Looking for Python 3"
    VERBATIM)
endif()
