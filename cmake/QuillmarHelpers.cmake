# Warnings are errors in our own code only; third-party headers come in as SYSTEM includes.
set(QUILLMAR_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast
    -Wcast-align -Woverloaded-virtual -Wconversion -Wsign-conversion
    -Wimplicit-fallthrough -Werror)

# quillmar_add_library(name SOURCES a.cpp b.cpp [DEPS lib...] [PUBLIC_DEPS lib...] [OBJECT])
# A library under core/ is also recorded for the include check (quillmar_check_core_includes): its files may
# include headers of its own library, of its declared DEPS and PUBLIC_DEPS, and of their PUBLIC_DEPS in turn.
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

    set_property(GLOBAL PROPERTY QUILLMAR_PUBLIC_DEPS_${name} ${ARG_PUBLIC_DEPS})
    set_property(GLOBAL PROPERTY QUILLMAR_DEPS_${name} ${ARG_PUBLIC_DEPS} ${ARG_DEPS})
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    if(folder MATCHES "^core/")
        set_property(GLOBAL APPEND PROPERTY QUILLMAR_CORE_LIBRARIES ${name})
        set_property(GLOBAL PROPERTY QUILLMAR_FOLDER_${name} ${folder})
        set_property(GLOBAL PROPERTY QUILLMAR_SOURCES_${name} ${ARG_SOURCES})
    endif()
endfunction()

# quillmar_check_core_includes(): after every core library is defined. Writes the map of which library owns
# which file and which libraries each may include, and adds the check that every build runs first (only
# again when a core file or the map changes). A file's owner is the library that compiles its .cpp, else
# quillmar_<folder> of its top folder under core/.
function(quillmar_check_core_includes)
    get_property(libraries GLOBAL PROPERTY QUILLMAR_CORE_LIBRARIES)
    set(map "")
    foreach(library ${libraries})
        get_property(folder GLOBAL PROPERTY QUILLMAR_FOLDER_${library})
        get_property(queue GLOBAL PROPERTY QUILLMAR_DEPS_${library})
        set(allowed ${library})
        while(queue)
            list(POP_FRONT queue item)
            if(item IN_LIST allowed OR NOT item IN_LIST libraries)
                continue()
            endif()
            list(APPEND allowed ${item})
            get_property(public GLOBAL PROPERTY QUILLMAR_PUBLIC_DEPS_${item})
            list(APPEND queue ${public})
        endwhile()
        string(APPEND map "set(\"allowed_${library}\" \"${allowed}\")\n")
        get_filename_component(folderName ${folder} NAME)
        if(library STREQUAL "quillmar_${folderName}")
            string(APPEND map "set(\"home_${folder}\" ${library})\n")
        endif()
        get_property(sources GLOBAL PROPERTY QUILLMAR_SOURCES_${library})
        foreach(source ${sources})
            string(REGEX REPLACE "\\.cpp$" "" stem "${folder}/${source}")
            string(APPEND map "set(\"owner_${stem}\" ${library})\n")
        endforeach()
    endforeach()
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}
        ${PROJECT_SOURCE_DIR}/core/*.h ${PROJECT_SOURCE_DIR}/core/*.cpp)
    list(SORT files)
    string(APPEND map "set(files \"${files}\")\n")
    set(mapFile ${PROJECT_BINARY_DIR}/core-includes.cmake)
    file(CONFIGURE OUTPUT ${mapFile} CONTENT "${map}" @ONLY)

    set(script ${PROJECT_SOURCE_DIR}/cmake/CheckCoreIncludes.cmake)
    set(stamp ${PROJECT_BINARY_DIR}/core-includes.stamp)
    list(TRANSFORM files PREPEND ${PROJECT_SOURCE_DIR}/)
    add_custom_command(OUTPUT ${stamp}
        COMMAND ${CMAKE_COMMAND} -D ROOT=${PROJECT_SOURCE_DIR} -D MAP=${mapFile} -D STAMP=${stamp} -P ${script}
        DEPENDS ${files} ${mapFile} ${script}
        COMMENT "Checking the includes of the core libraries"
        VERBATIM)
    add_custom_target(quillmar_core_includes ALL DEPENDS ${stamp})
    foreach(library ${libraries})
        add_dependencies(${library} quillmar_core_includes)
    endforeach()
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
    target_link_libraries(${name} PRIVATE ${ARG_DEPS} quillmar_base_system GTest::gmock GTest::gtest_main)
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
