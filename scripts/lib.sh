# shellcheck shell=bash
# What the scripts of this folder share; they source it, nobody runs it.
#
# Sourcing goes to the top folder of the project and turns strict mode on. Chatter of installing and building is shown
# only when something fails; progress goes to standard error, so that standard output is the program's own.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# What each purpose needs: a Debian package, and the command, header or file by which it is known to be there. Looking at
# these files takes no time, and also accepts what was installed in another way.
# shellcheck disable=SC2034  # each is read by some of the scripts
{
    kBuildPackages=(
        cmake:cmake
        ninja-build:ninja
        g++:g++
        libboost1.81-dev:boost/unordered/unordered_flat_map.hpp
        libutfcpp-dev:utf8.h
        libgtest-dev:gtest/gtest.h
        libgmock-dev:gmock/gmock.h
        librapidcheck-dev:rapidcheck.h
        libboost-json1.81-dev:boost/json.hpp
        python3:python3
        rapidjson-dev:rapidjson/document.h
        nlohmann-json3-dev:nlohmann/json.hpp
        locales:/usr/share/i18n/locales/tr_TR
        libcli11-dev:CLI/CLI.hpp
        python3-jsonschema:jsonschema
        nlohmann-json3-dev:nlohmann/json.hpp
        libkainjow-mustache-dev:kainjow/mustache.hpp
        libcsv-dev:csv.h
        parallel:parallel
    )
    kBenchPackages=(libbenchmark-dev:benchmark/benchmark.h)
    # Who the comparison measures beside; any of them may be missing.
    kPeerPackages=(
        rapidjson-dev:rapidjson/document.h
        nlohmann-json3-dev:nlohmann/json.hpp
        libsimdjson-dev:simdjson.h
        libprotobuf-dev:google/protobuf/util/json_util.h
        protobuf-compiler:protoc
        qt6-base-dev:qmake6
    )
    kCountPackages=(valgrind:valgrind)
    kFormatPackages=(clang-format-14:clang-format-14)
    kClangPackages=(clang:clang++)
    kDocPackages=(doxygen:doxygen pandoc:pandoc python3:python3)
    kGdbPackages=(gdb:gdb)
    kPackagePackages=(
        dpkg-dev:dpkg-shlibdeps
        file:file
        lintian:lintian
        pkg-config:pkg-config
    )
    kCoveragePackages=(gcovr:gcovr)
    kFuzzPackages=(clang:clang++ "libclang-rt-dev:libclang_rt.fuzzer-$(uname -m).a")
    kTidyPackages=(clang-tidy-14:clang-tidy-14)
    kPagePackages=(chromium:chromium nodejs:node npm:npm)
}

say() { printf '%s\n' "$*" >&2; }

# Runs a command; what it prints is shown only when it fails.
quietly() {
    local log status=0
    log=$(mktemp)
    "$@" >"$log" 2>&1 </dev/null || status=$?
    if [ "$status" -ne 0 ]; then
        cat "$log" >&2
        say "failed: $*"
    fi
    rm -f "$log"
    return "$status"
}

is_present() {
    case $1 in
        /*) [ -e "$1" ] ;;
        *.h | *.hpp) [ -e "/usr/include/$1" ] || [ -e "/usr/local/include/$1" ] ;;
        *.a) [ -e "$(clang++ -print-file-name="$1" 2>/dev/null)" ] ;;  # one of the compiler's own libraries
        *) command -v "$1" >/dev/null ;;
    esac
}

# need package:probe...: installs those that are missing. Needs no network and no rights where nothing is missing;
# where something is and this user cannot install it, says what to install and ends with 2.
need() {
    local entry missing=()
    for entry in "$@"; do
        is_present "${entry#*:}" || missing+=("${entry%%:*}")
    done
    [ "${#missing[@]}" -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ] || ! command -v apt-get >/dev/null; then
        say "These Debian packages are needed and not there: ${missing[*]}"
        say "Install them, for example with"
        say "    sudo apt-get install --no-install-recommends ${missing[*]}"
        say "and run this again."
        exit 2
    fi
    say "installing ${missing[*]}"
    # A list that cannot be renewed may still do.
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300)
    quietly "${apt[@]}" update || true
    quietly "${apt[@]}" install --yes --no-install-recommends "${missing[@]}" || exit 2
}

# need_each package:probe...: as need, but goes on without what cannot be had.
need_each() {
    local entry
    (need "$@") && return
    for entry in "$@"; do
        (need "$entry") || say "going on without ${entry%%:*}"
    done
}

# build PRESET [TARGET...]: configures where that was not done since the presets changed, and builds.
build() {
    local preset=$1
    shift
    local ninja=build/$preset/build.ninja targets=()
    if [ "$#" -gt 0 ]; then
        targets=(--target "$@")
    fi
    if [ ! -e "$ninja" ] || [ CMakePresets.json -nt "$ninja" ]; then
        say "configuring and building the preset $preset; the first time takes some minutes"
        quietly cmake --preset "$preset"
    fi
    quietly cmake --build --preset "$preset" "${targets[@]}"
}

# fixed_addresses COMMAND...: runs it without random addresses, where the kernel lets us. The thread sanitizer wants its
# shadow memory at fixed places, which some kernels have already given away at random.
fixed_addresses() {
    if setarch "$(uname -m)" --addr-no-randomize true 2>/dev/null; then
        setarch "$(uname -m)" --addr-no-randomize "$@"
    else
        "$@"
    fi
}
