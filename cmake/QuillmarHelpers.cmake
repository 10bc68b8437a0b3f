# Warnings are errors in our own code only; third-party headers come in as SYSTEM includes.
set(QUILLMAR_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast
    -Wcast-align -Woverloaded-virtual -Wconversion -Wsign-conversion
    -Wimplicit-fallthrough -Werror)

# quillmar_add_library(name SOURCES a.cpp b.cpp [DEPS lib...] [PUBLIC_DEPS lib...] [OBJECT])
function(quillmar_add_library name)
    cmake_parse_arguments(ARG "OBJECT" "" "SOURCES;DEPS;PUBLIC_DEPS" ${ARGN})
    if(ARG_OBJECT)
        add_library(${name} OBJECT ${ARG_SOURCES})
    else()
        add_library(${name} STATIC ${ARG_SOURCES})
    endif()
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_compile_options(${name} PRIVATE ${QUILLMAR_WARNINGS})
    target_link_libraries(${name} PUBLIC ${ARG_PUBLIC_DEPS} PRIVATE ${ARG_DEPS})
endfunction()

# quillmar_add_executable(name SOURCES a.cpp [DEPS lib...])
# Every program (and test, benchmark, fuzz target) links quillmar_base_system, the system half of core/base
# (writeFileAtomically): core libraries call it but may not link a backend themselves.
function(quillmar_add_executable name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_compile_options(${name} PRIVATE ${QUILLMAR_WARNINGS})
    target_link_libraries(${name} PRIVATE ${ARG_DEPS} quillmar_base_system)
endfunction()

# quillmar_add_test(name SOURCES a_test.cpp [DEPS lib...]): one GoogleTest binary, its cases discovered by CTest.
function(quillmar_add_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_compile_options(${name} PRIVATE ${QUILLMAR_WARNINGS})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE ${ARG_DEPS} quillmar_base_system GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${name} NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endfunction()

# quillmar_add_benchmark(name SOURCES a_bench.cpp [DEPS lib...])
function(quillmar_add_benchmark name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_compile_options(${name} PRIVATE ${QUILLMAR_WARNINGS})
    target_link_libraries(${name} PRIVATE ${ARG_DEPS} quillmar_base_system benchmark::benchmark_main)
endfunction()

# quillmar_add_fuzzer(name SOURCES a_fuzz.cpp [DEPS lib...])
function(quillmar_add_fuzzer name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_compile_options(${name} PRIVATE ${QUILLMAR_WARNINGS})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_libraries(${name} PRIVATE ${ARG_DEPS} quillmar_base_system)
endfunction()
