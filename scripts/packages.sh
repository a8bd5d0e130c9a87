# Sourced by the other scripts: functions to install missing packages and to
# build.

# Each line: a Debian package, and a command or a header that is there once it's
# installed. The name of a header may be a pattern.
packages_table='
g++ command g++
cmake command cmake
ninja-build command ninja
pkg-config command pkg-config
rapidjson-dev header rapidjson/document.h
libzip-dev header zip.h
libcli11-dev header CLI/CLI.hpp
libpcre2-dev header pcre2.h
libunistring-dev header uninorm.h
libpugixml-dev header pugixml.hpp
libgtest-dev header gtest/gtest.h
libbenchmark-dev header benchmark/benchmark.h
clang command clang++
libclang-rt-14-dev header ../lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.fuzzer-*.a
clang-tidy command clang-tidy
clang-format command clang-format
nodejs command node
npm command npm
unzip command unzip
python3 command python3
git command git
doxygen command doxygen
translate-toolkit command json2po
dpkg-dev command dpkg-shlibdeps
qtbase5-dev header */qt5/QtWidgets/QUndoStack
qttools5-dev-tools command lupdate
nlohmann-json3-dev header nlohmann/json.hpp
'

package_is_there() {
    read -r _ kind name << EOF
$(printf '%s' "$packages_table" | grep "^$1 ")
EOF
    case $kind in
        command) command -v "$name" > /dev/null ;;
        header)
            for file in /usr/include/$name /usr/local/include/$name; do
                test ! -e "$file" || return 0
            done
            return 1
            ;;
        *) return 1 ;;
    esac
}

# need_packages NAME...: installs those that are missing
need_packages() {
    missing=
    for package in "$@"; do
        package_is_there "$package" || missing="$missing $package"
    done
    test -n "$missing" || return 0

    if ! command -v apt-get > /dev/null; then
        echo "Missing, by the names of Debian's packages:$missing" >&2
        echo "This system has no apt-get; please install them yourself." >&2
        exit 1
    fi
    sudo=
    test "$(id -u)" = 0 || sudo=sudo
    echo "Installing$missing ..." >&2
    $sudo apt-get update -qq < /dev/null > /dev/null || true
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
        --no-install-recommends $missing < /dev/null > /dev/null || {
        echo "Could not install$missing" >&2
        exit 1
    }
}

# build PRESET [ARGUMENT...]: configures, printing only failures, and builds
# with the given arguments of "cmake --build"
build() {
    need_packages g++ cmake ninja-build pkg-config rapidjson-dev libzip-dev \
        libcli11-dev libpcre2-dev libpugixml-dev libunistring-dev \
        libgtest-dev libbenchmark-dev
    configured=$(cmake --preset "$1" 2>&1) || {
        printf '%s\n' "$configured" >&2
        exit 1
    }
    cmake --build --preset "$@"
}
