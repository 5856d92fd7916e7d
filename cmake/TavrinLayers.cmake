# The layers of the program and the direction in which they may depend on each other.
#
# tavrin_layer(NAME FOLDER MAY_USE ... SOURCES ... PUBLIC ... PRIVATE ...) makes the static library
# tavrin-NAME from FOLDER and registers which other folders its sources may include. Includes are
# rooted at the repository, so the linker alone would not notice a header of a higher layer: the
# check at the end of the function reads the include lines and stops the configuration.

add_library(tavrin-options INTERFACE)
target_compile_options(tavrin-options INTERFACE -Wall -Wextra -Wpedantic -Werror)
target_include_directories(tavrin-options INTERFACE ${CMAKE_SOURCE_DIR})
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Reports std::string's own operator+ (GCC bug 105651).
    target_compile_options(tavrin-options INTERFACE -Wno-restrict)
endif()
if(TAVRIN_SANITIZERS)
    # Stop at the first finding, so that a test cannot pass over it.
    target_compile_options(tavrin-options INTERFACE
        -fsanitize=${TAVRIN_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tavrin-options INTERFACE -fsanitize=${TAVRIN_SANITIZERS})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # GCC 12 reports library code inlined into sanitized functions as suspicious.
        target_compile_options(tavrin-options INTERFACE
            -Wno-maybe-uninitialized -Wno-array-bounds -Wno-stringop-overflow)
    endif()
endif()

if(TAVRIN_FUZZERS)
    # Lets a fuzzer see which branches its inputs reach, in all of the product.
    target_compile_options(tavrin-options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Stops the configuration when a source of FOLDER includes a folder that is not in ARGN.
function(tavrin_check_includes folder)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS
        ${CMAKE_SOURCE_DIR}/${folder}/*.h ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
    foreach(source IN LISTS sources)
        file(STRINGS ${source} lines REGEX "^#include \"")
        foreach(line IN LISTS lines)
            string(REGEX REPLACE "^#include \"([^\"]*)/[^/\"]*\".*" "\\1" target "${line}")
            set(allowed FALSE)
            foreach(root IN ITEMS ${folder} ${ARGN})
                if(target STREQUAL root OR target MATCHES "^${root}/")
                    set(allowed TRUE)
                endif()
            endforeach()
            if(NOT allowed)
                message(FATAL_ERROR "${source} may not use \"${target}\": ${folder} may use "
                    "only ${ARGN}")
            endif()
        endforeach()
    endforeach()
endfunction()

function(tavrin_layer name folder)
    cmake_parse_arguments(PARSE_ARGV 2 LAYER "" "" "MAY_USE;SOURCES;PUBLIC;PRIVATE")
    add_library(tavrin-${name} STATIC ${LAYER_SOURCES})
    target_link_libraries(tavrin-${name}
        PUBLIC tavrin-options ${LAYER_PUBLIC}
        PRIVATE ${LAYER_PRIVATE})
    tavrin_check_includes(${folder} ${LAYER_MAY_USE})
endfunction()
