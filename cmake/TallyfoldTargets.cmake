# How every target of the house is made: one warning level, one set of sanitizers, headers that compile alone.

find_program(CCACHE ccache)
if(CCACHE)
    # What a precompiled header defines and when it was made is told by its content alone.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND NOT CMAKE_DISABLE_PRECOMPILE_HEADERS)
        add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
    endif()
endif()

add_library(TallyfoldFlags INTERFACE)
# Headers of others that most files read are parsed once for each target: reading them is most of the work of a small file.
# None of the house is among them, so that a change of ours never makes everything anew. A file still includes what it
# uses: the preset "tidy" compiles without them.
target_precompile_headers(TallyfoldFlags INTERFACE <algorithm> <array> <chrono> <cstdint> <expected> <functional> <map>
    <memory> <optional> <set> <span> <string> <string_view> <unordered_map> <utility> <variant> <vector>)
target_compile_options(TallyfoldFlags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Werror)
target_include_directories(TallyfoldFlags INTERFACE ${PROJECT_SOURCE_DIR})

# Sanitizers are set for the whole tree, so that no object is left uninstrumented.
if(TALLYFOLD_SANITIZERS)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

# All sources below this folder, without its tests/ and testing/ folders.
function(tallyfold_sources out_sources out_headers)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS *.h)
    foreach(list sources headers)
        list(FILTER ${list} EXCLUDE REGEX "/(tests|testing)/")
        list(FILTER ${list} EXCLUDE REGEX "/main\\.cpp$")
    endforeach()
    set(${out_sources} ${sources} PARENT_SCOPE)
    set(${out_headers} ${headers} PARENT_SCOPE)
endfunction()

# tallyfold_headers(NAME header...): a unit for each header of the library, so that `headers` shows that each compiles alone.
add_custom_target(headers)
function(tallyfold_headers name)
    set(units)
    foreach(header ${ARGN})
        file(RELATIVE_PATH path ${PROJECT_SOURCE_DIR} ${header})
        set(unit ${PROJECT_BINARY_DIR}/headers/${path}.cpp)
        file(CONFIGURE OUTPUT ${unit} CONTENT "#include \"${path}\"\n")
        list(APPEND units ${unit})
    endforeach()
    add_library(${name}Headers OBJECT EXCLUDE_FROM_ALL ${units})
    target_link_libraries(${name}Headers PRIVATE ${name})
    target_precompile_headers(${name}Headers REUSE_FROM ${name})
    add_dependencies(headers ${name}Headers)
endfunction()

# tallyfold_library(NAME [FOLDERS dir...] [QT] LINK libs...): a static library of this folder's sources
# (only those below FOLDERS where given). QT runs moc over them.
function(tallyfold_library name)
    cmake_parse_arguments(arg "QT" "" "FOLDERS;LINK;PRIVATE_LINK" ${ARGN})
    tallyfold_sources(sources headers)
    if(arg_FOLDERS)
        list(JOIN arg_FOLDERS "|" folders)
        foreach(list sources headers)
            list(FILTER ${list} INCLUDE REGEX "^${CMAKE_CURRENT_SOURCE_DIR}/(${folders})/")
        endforeach()
    endif()
    if(NOT sources)
        add_library(${name} INTERFACE)
        return()
    endif()
    add_library(${name} STATIC ${sources} ${headers}) # moc reads the headers, too
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
    if(arg_QT)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
        target_compile_definitions(${name} PUBLIC QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
            QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)
    endif()
    target_link_libraries(${name} PUBLIC TallyfoldFlags ${arg_LINK} PRIVATE ${arg_PRIVATE_LINK})
    tallyfold_headers(${name} ${headers})
endfunction()

# tallyfold_compile_fast(NAME): what runs once, as tests do, costs the sanitized build more to optimise than it saves.
function(tallyfold_compile_fast name)
    if(TALLYFOLD_SANITIZERS)
        target_compile_options(${name} PRIVATE -O0)
    endif()
endfunction()

# tallyfold_tests(NAME [QT] [FOLDER dir] [FILTER filter] LINK libs...): one GoogleTest program of this folder's tests/, each
# test known to ctest, or those that pass the filter.
function(tallyfold_tests name)
    if(NOT TALLYFOLD_TESTS)
        return()
    endif()
    cmake_parse_arguments(arg "QT" "FOLDER;FILTER" "LINK" ${ARGN})
    if(NOT arg_FOLDER)
        set(arg_FOLDER tests)
    endif()
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${arg_FOLDER}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/fuzz/")
    if(NOT sources)
        return()
    endif()
    add_executable(${name} ${sources})
    target_link_libraries(${name} PRIVATE TallyfoldFlags ${arg_LINK} GTest::gtest)
    target_precompile_headers(${name} PRIVATE <gtest/gtest.h>)
    tallyfold_compile_fast(${name})
    if(arg_QT)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
        target_link_libraries(${name} PRIVATE Qt6::Test)
        target_precompile_headers(${name} PRIVATE <QTest>)
    else()
        target_link_libraries(${name} PRIVATE GTest::gtest_main)
    endif()
    include(GoogleTest)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120 NO_PRETTY_VALUES TEST_FILTER "${arg_FILTER}"
        PROPERTIES TIMEOUT 300 ENVIRONMENT
            "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/leaks.supp:print_suppressions=0;UBSAN_OPTIONS=print_stacktrace=1")
endfunction()

# tallyfold_fuzzer(NAME SEED file LINK libs... [SOURCES product sources to watch]): a libFuzzer program of this folder, with a
# short bounded run in ctest.
function(tallyfold_fuzzer name)
    cmake_parse_arguments(arg "" "SEED" "SOURCES;LINK" ${ARGN})
    list(TRANSFORM arg_SOURCES PREPEND ${PROJECT_SOURCE_DIR}/)
    add_executable(${name} ${name}.cpp ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES DISABLE_PRECOMPILE_HEADERS ON)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_libraries(${name} PRIVATE TallyfoldFlags ${arg_LINK})
    add_test(NAME ${name} COMMAND ${name} -runs=20000 -seed=1 -max_len=4096 -verbosity=0
        -seed_inputs=${CMAKE_CURRENT_SOURCE_DIR}/${arg_SEED} -artifact_prefix=${CMAKE_CURRENT_BINARY_DIR}/)
    set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "UBSAN_OPTIONS=print_stacktrace=1")
endfunction()
