# One set of warnings for every target of the tree; users of the installed package get none of it.

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(RIVELTA_WERROR)
    set(CMAKE_COMPILE_WARNING_AS_ERROR ON)
endif()
