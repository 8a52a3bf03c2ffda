# Language level, visibility and output folders: the same for every target, so that one precompiled header serves all.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Executables are compiled like libraries: a precompiled header is refused by the compiler when the two differ.
add_compile_options(-fPIC)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-fno-semantic-interposition)
endif()

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release)
endif()

set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

# Libraries find each other and the English module in their own folder; the tool finds them from bin/.
file(RELATIVE_PATH obmLibFromBin "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/${obmLibFromBin}")

find_program(RIVELTA_CCACHE ccache)
mark_as_advanced(RIVELTA_CCACHE)
if(RIVELTA_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Without this sloppiness ccache refuses every compilation that uses a precompiled header.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${RIVELTA_CCACHE}")
    if(RIVELTA_PCH AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        add_compile_options(-fpch-preprocess)
    endif()
endif()
