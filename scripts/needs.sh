# Sourced by the scripts beside it. `need PACKAGE PROBE...` notes a Debian package that is missing when the command
# PROBE fails; `install_needs` then installs what was noted, or names it and stops.

missing=()

need() {
    local package=$1
    shift
    "$@" >/dev/null 2>&1 || missing+=("$package")
}

has_header() {
    printf '#include <%s>\n' "$1" | "${CXX:-c++}" -std=c++17 -E -x c++ - >/dev/null 2>&1
}

need_build_tools() {
    need g++ "${CXX:-c++}" --version
    need cmake cmake --version
    need ninja-build ninja --version
}

# What dalvo-config is built with.
need_tool_libraries() {
    need libcli11-dev has_header CLI/CLI.hpp
    need nlohmann-json3-dev has_header nlohmann/json.hpp
    need libutf8proc-dev has_header utf8proc.h
}

need_test_libraries() {
    need libgtest-dev has_header gtest/gtest.h
    need librapidcheck-dev has_header rapidcheck.h
}

# What examples/solve and examples/smt are built with.
need_solvers() {
    need libcadical-dev has_header cadical.hpp
    need libz3-dev has_header z3++.h
}

need_package_tools() {
    need dpkg-dev dpkg-shlibdeps --version
    need file file --version
}

install_needs() {
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
    fi
    if ! type "${as_root[@]}" apt-get >/dev/null 2>&1; then
        echo "$0: please install, by whatever names your system has for them: ${missing[*]}" >&2
        exit 1
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
    missing=()
}
