# The include rule holds in the tree, and the check that says so finds each way to break it.
# Run as: cmake -DTREE=source-folder -DSCRATCH=folder -P include_rule_test.cmake
cmake_minimum_required(VERSION 3.25)
set(check ${CMAKE_CURRENT_LIST_DIR}/include_rule.cmake)

function(check_tree tree outcome)
  execute_process(COMMAND ${CMAKE_COMMAND} -DTREE=${tree} -P ${check}
                  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    set(status 1)
  endif()
  if(NOT status EQUAL outcome)
    message(SEND_ERROR "expected ${outcome}, not ${status}, of ${tree}:\n${output}")
  endif()
endfunction()

# A tree of one file with one line in it.
function(check_line file line outcome)
  file(REMOVE_RECURSE ${SCRATCH})
  file(WRITE ${SCRATCH}/${file} "${line}\n")
  check_tree(${SCRATCH} ${outcome})
endfunction()

check_tree(${TREE} 0)

check_line(settings/settings.h "#include <cstdint>" 0)
check_line(settings/registry_settings.cpp "#include <windows.h>" 0)
check_line(ui/shell.cpp "#include <windows.h>" 0)
check_line(core/table.cpp "#include \"settings/settings.h\"" 0)
check_line(cli/main.cpp "#include <unistd.h>" 0)

check_line(settings/settings.h "#include \"core/types.h\"" 1)
check_line(settings/memory_settings.cpp "#include <windows.h>" 1)
check_line(core/table.cpp "#include \"strategy/best_hold.h\"" 1)
check_line(core/random.cpp "# include <windows.h>" 1)
check_line(core/random.cpp "#ifdef _WIN32" 1)
check_line(strategy/choose.h "#include \"settings/settings.h\"" 1)
check_line(strategy/choose.h "#include \"training/hand_details.h\"" 1)
check_line(training/game_analysis.cpp "#include \"ui/shell.h\"" 1)
check_line(training/game_analysis.cpp "#include \"cli/parse.h\"" 1)
check_line(cli/main.cpp "#include \"ui/shell.h\"" 1)
check_line(cli/main.cpp "#include <windows.h>" 1)
check_line(ui/shell.cpp "#include \"cli/parse.h\"" 1)
check_line(elsewhere/a.cpp "#include <cstdint>" 1)
file(REMOVE_RECURSE ${SCRATCH})
