# What every target of the project shares: the language, the warnings, the sanitizers.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# All that is not installed: a packager, or a project that this one is a part of, needs none of it, nor what it stands on.
option(TL_BUILD_STANDIN "Build the stand-in server, which needs Boost and OpenSSL" ${PROJECT_IS_TOP_LEVEL})
option(TL_BUILD_HOST "Build the sample host; with the stand-in server also the tour of its windows" ${PROJECT_IS_TOP_LEVEL})
option(TL_BUILD_TESTS "Build the tests, which need the stand-in server, the sample host and GoogleTest" ${PROJECT_IS_TOP_LEVEL})
option(TL_BUILD_BENCHMARKS "Build the benchmarks, which need the stand-in server and the sample host" OFF)
if((TL_BUILD_TESTS OR TL_BUILD_BENCHMARKS) AND NOT (TL_BUILD_STANDIN AND TL_BUILD_HOST))
    message(FATAL_ERROR "TL_BUILD_TESTS and TL_BUILD_BENCHMARKS need TL_BUILD_STANDIN and TL_BUILD_HOST.")
endif()

# On in the presets of those who work on the project: who only builds it may have a compiler that warns of more.
option(TL_WARNINGS_AS_ERRORS "Take every warning for an error" OFF)
set(TL_SANITIZE "" CACHE STRING "Sanitizers, as the compiler names them: address,undefined or thread")

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
if(TL_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overlaps in std::string's operator+ that are not there (GCC bug 105651).
    add_compile_options(-Wno-restrict)
endif()
add_compile_definitions(
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(TL_SANITIZE)
    add_compile_options(-fsanitize=${TL_SANITIZE} -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=${TL_SANITIZE})
    if(TL_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
    if(TL_SANITIZE MATCHES "thread" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # Between the sanitizer's calls GCC 12 loses sight of what an empty std::optional leaves alone.
        add_compile_options(-Wno-maybe-uninitialized)
    endif()
endif()

# tl_add_library(NAME SOURCES… LIBRARIES…): one folder of the project as a static library. Includes are written from the root
# of the project, so that a line tells which floor it reaches for.
function(tl_add_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}")
    target_link_libraries(${name} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE})
endfunction()
