# SPDX-License-Identifier: MIT
find_package(Qt${PARAMTERWND_QT} 5.15 REQUIRED COMPONENTS Test)

# paramter_test(<name> [SOURCES files...] [LINK targets...] [LAUNCHER program])
# A QtTest program <name>.cpp, run without a display. Object libraries named in LINK are linked as they stand.
# A launcher gets the command of the test as its arguments.
function(paramter_test name)
    cmake_parse_arguments(arg "" "LAUNCHER" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${name}.cpp ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${arg_LINK} Qt::Test)
    add_test(NAME ${name} COMMAND ${arg_LAUNCHER} $<TARGET_FILE:${name}>)
    set(environment QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
        LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/ci/leaks.supp:print_suppressions=0
        TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/ci/threads.supp)
    set_tests_properties(${name} PROPERTIES TIMEOUT 120 ENVIRONMENT "${environment}")
endfunction()
