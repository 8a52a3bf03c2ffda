# Sourced by ./run and ./test: install_needs PACKAGE... installs those that are missing, from the distribution only.

install_needs() {
    local missing=() package as_root=() log
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { echo "These packages are missing: ${missing[*]}" >&2; return 1; }
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    log=$("${as_root[@]}" apt-get -qq update </dev/null 2>&1 &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get -qq -y --no-install-recommends install "${missing[@]}" </dev/null 2>&1) || {
        printf '%s\n' "$log" >&2
        return 1
    }
}

run_needs=(g++ cmake ninja-build libxerces-c-dev libicu-dev libcli11-dev libfmt-dev nlohmann-json3-dev)
test_needs=("${run_needs[@]}" git pkg-config libgtest-dev libgmock-dev librapidcheck-dev libbenchmark-dev
    libsqlite3-dev libpugixml-dev libboost-graph-dev clang-14 libclang-rt-14-dev llvm-14 clang-format-14 clang-tidy-14)
