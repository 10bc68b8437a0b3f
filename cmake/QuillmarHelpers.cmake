# Warnings are errors in our own code only; third-party headers come in as SYSTEM includes.
set(QUILLMAR_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast
    -Wcast-align -Woverloaded-virtual -Wconversion -Wsign-conversion
    -Wimplicit-fallthrough -Werror)

# quillmar_add_library(name SOURCES a.cpp b.cpp [DEPS lib...] [PUBLIC_DEPS lib...])
function(quillmar_add_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS;PUBLIC_DEPS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_compile_options(${name} PRIVATE ${QUILLMAR_WARNINGS})
    target_link_libraries(${name} PUBLIC ${ARG_PUBLIC_DEPS} PRIVATE ${ARG_DEPS})
endfunction()

# quillmar_add_executable(name SOURCES a.cpp [DEPS lib...])
function(quillmar_add_executable name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_compile_options(${name} PRIVATE ${QUILLMAR_WARNINGS})
    target_link_libraries(${name} PRIVATE ${ARG_DEPS})
endfunction()

# quillmar_add_test(name SOURCES a_test.cpp [DEPS lib...] [SHARDS n]): one GoogleTest binary, run by CTest as
# n shards (one by default). A process per case paid a sanitized start-up for each of two thousand cases; a
# process per shard lets CTest spread the binaries over the cores at a fraction of that.
function(quillmar_add_test name)
    cmake_parse_arguments(ARG "" "SHARDS" "SOURCES;DEPS" ${ARGN})
    if(NOT ARG_SHARDS)
        set(ARG_SHARDS 1)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_compile_options(${name} PRIVATE ${QUILLMAR_WARNINGS})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE ${ARG_DEPS} GTest::gmock GTest::gtest_main)
    quillmar_share_test_pch(${name})
    if(ARG_SHARDS EQUAL 1)
        add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
        set_tests_properties(${name} PROPERTIES TIMEOUT 240)
    else()
        math(EXPR last "${ARG_SHARDS} - 1")
        foreach(shard RANGE ${last})
            add_test(NAME ${name}/${shard} COMMAND ${name} --gtest_brief=1)
            set_tests_properties(${name}/${shard} PROPERTIES TIMEOUT 240
                ENVIRONMENT "GTEST_TOTAL_SHARDS=${ARG_SHARDS};GTEST_SHARD_INDEX=${shard}")
        endforeach()
    endif()
endfunction()

# The test binaries share one precompiled header of the heavy third-party headers every test includes; the first
# test target builds it and the rest reuse it (they share compile options, which reuse requires).
function(quillmar_share_test_pch name)
    get_property(owner GLOBAL PROPERTY QUILLMAR_TEST_PCH_OWNER)
    if(NOT owner)
        set_property(GLOBAL PROPERTY QUILLMAR_TEST_PCH_OWNER ${name})
        target_precompile_headers(${name} PRIVATE <gtest/gtest.h> <gmock/gmock.h> <nlohmann/json.hpp>
            <fmt/format.h> <string> <vector> <map> <memory> <functional> <optional> <filesystem>)
        target_link_libraries(${name} PRIVATE nlohmann_json::nlohmann_json fmt::fmt)
    else()
        target_precompile_headers(${name} REUSE_FROM ${owner})
        target_link_libraries(${name} PRIVATE nlohmann_json::nlohmann_json fmt::fmt)
    endif()
endfunction()

# quillmar_add_benchmark(name SOURCES a_bench.cpp [DEPS lib...])
function(quillmar_add_benchmark name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_compile_options(${name} PRIVATE ${QUILLMAR_WARNINGS})
    target_link_libraries(${name} PRIVATE ${ARG_DEPS} benchmark::benchmark_main)
endfunction()

# quillmar_add_fuzzer(name SOURCES a_fuzz.cpp [DEPS lib...])
function(quillmar_add_fuzzer name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_compile_options(${name} PRIVATE ${QUILLMAR_WARNINGS})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_libraries(${name} PRIVATE ${ARG_DEPS})
endfunction()
