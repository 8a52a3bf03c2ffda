# One precompiled header for the libraries and programs, one with GoogleTest on top for the tests.
# No source may lean on them: the clang build goes without.

set(obmStdHeaders
    <algorithm> <array> <atomic> <charconv> <cmath> <cstddef> <cstdint> <cstdio> <cstdlib> <cstring> <cwchar>
    <deque> <filesystem> <functional> <initializer_list> <limits> <list> <map> <memory> <mutex> <optional> <set>
    <span> <stdexcept> <string> <string_view> <thread> <tuple> <type_traits> <unordered_map> <unordered_set>
    <utility> <variant> <vector>)

# obm_add_pch(<name> <header>...): an object library whose header others share.
function(obm_add_pch name)
    set(source "${PROJECT_BINARY_DIR}/pch/${name}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "// Owns a precompiled header.\n")
    add_library(${name} OBJECT EXCLUDE_FROM_ALL "${source}")
    target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()

# obm_use_pch(<target> <name>)
function(obm_use_pch target name)
    if(RIVELTA_PCH)
        target_precompile_headers(${target} REUSE_FROM ${name})
    endif()
endfunction()

if(RIVELTA_PCH)
    obm_add_pch(obm_pch ${obmStdHeaders})
endif()
