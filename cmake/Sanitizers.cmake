# RIVELTA_SANITIZE=address,undefined or thread builds the whole tree with these; a finding ends the program.

if(RIVELTA_SANITIZE)
    add_compile_options(-fsanitize=${RIVELTA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${RIVELTA_SANITIZE})
endif()
if(RIVELTA_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "RIVELTA_FUZZ needs clang: libFuzzer comes with it")
    endif()
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# The environment in which a sanitized test runs, as NAME=VALUE entries for ctest.
set(RIVELTA_TEST_ENVIRONMENT
    "ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1"
    "UBSAN_OPTIONS=print_stacktrace=1"
    "TSAN_OPTIONS=second_deadlock_stack=1")
