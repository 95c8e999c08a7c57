# SPDX-License-Identifier: MIT
# Sourced by ./run, ./test and .ci/run, which run in the project's folder: installs packages and builds.

# Packages for the build, including the tests of the kits and the program (one configuration serves both).
build_packages=(g++ cmake ninja-build ccache qt6-base-dev libgl-dev libxcb1-dev libgtest-dev libgmock-dev libbenchmark-dev
    fonts-dejavu-core)

# Further packages for making the Debian package.
package_packages=(dpkg-dev file)

say() {
    printf '%s: %s\n' "$(basename "$0")" "$*"
}

# need PACKAGE...: installs those of the given Debian packages that are missing.
need() {
    if ! command -v dpkg-query >/dev/null; then
        say "this is no Debian: taking for granted that these or their like are there: $*"
        return
    fi
    local package missing=()
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            say "these packages are missing; install them as root: apt-get install ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq)
    say "installing ${missing[*]}"
    # Package lists may be missing or outdated; they are fetched only in that case.
    if ! "${apt[@]}" install --no-install-recommends -y "${missing[@]}" >/dev/null 2>&1; then
        say "fetching the package lists"
        "${apt[@]}" update
        "${apt[@]}" install --no-install-recommends -y "${missing[@]}" >/dev/null
    fi
}

# build PRESET [TARGET]...: configures if needed and builds; prints only warnings and errors when everything is built.
build() {
    local preset=$1 folder=build
    shift
    [ "$preset" = release ] || folder=build-$preset
    # A folder that was configured elsewhere (in a moved or copied clone) cannot be used again.
    if [ -f "$folder/CMakeCache.txt" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "$folder/CMakeCache.txt"; then
        say "$folder/ was made for another folder: starting it anew"
        rm -rf "$folder"
    fi
    local log
    log=$(mktemp)
    if ! cmake --preset "$preset" >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        return 1
    fi
    rm -f "$log"
    cmake --build --preset "$preset" ${1:+--target "$@"} -- --quiet | { grep -vxF 'ninja: no work to do.' || true; }
}

# build_package: makes the Debian package of the release build; sets package to the path of the file.
build_package() {
    local log
    build release installed
    rm -rf build/package
    if ! log=$(cpack --config build/CPackConfig.cmake -B "$PWD/build/package" 2>&1); then
        printf '%s\n' "$log" >&2
        return 1
    fi
    package=$(echo build/package/*.deb)
}

# start_screen: starts an X server without a screen for as long as this shell lives; sets DISPLAY.
start_screen() {
    local number
    number=$(mktemp)
    Xvfb -displayfd 3 -noreset -screen 0 1280x800x24 -nolisten tcp 3>"$number" >/dev/null 2>&1 &
    screen_process=$!
    trap 'kill "$screen_process" 2>/dev/null || true' EXIT
    local turns=0
    until [ -s "$number" ]; do
        if ! kill -0 "$screen_process" 2>/dev/null || [ $((turns += 1)) -gt 200 ]; then
            say "Xvfb does not start" >&2
            rm -f "$number"
            return 1
        fi
        sleep 0.05
    done
    DISPLAY=:$(cat "$number")
    export DISPLAY
    rm -f "$number"
}
