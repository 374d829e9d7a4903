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
