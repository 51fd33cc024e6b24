#!/bin/bash
# Makes this machine ready to build and test: Debian packages, the libraries in build/deps, and the Wine prefix.
# Quick when all is there.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

packages=(
    cmake ninja-build git
    g++-mingw-w64-x86-64-posix wine wine64 fonts-wine pkgconf        # the Windows build
    g++ clang libclang-rt-14-dev llvm                                # the native build with sanitizers
    lld                                                              # programs of other compilers, in tests
    libcli11-dev libpcre2-dev                                       # command lines, regular expressions
    libhowardhinnant-date-dev nlohmann-json3-dev                    # dates, JSON
    libsqlite3-dev make tcl                                         # saved messages; making its one source file
    libgtest-dev libspdlog-dev                                       # tests; the benchmarks' peer
    xvfb xauth xdotool x11-utils imagemagick xclip libxml2-utils    # windows on a virtual display, their test
    clang-format clang-tidy gcovr
)

as_root() {
    if [[ $EUID -eq 0 ]]; then
        DEBIAN_FRONTEND=noninteractive "$@"
    else
        sudo DEBIAN_FRONTEND=noninteractive "$@"
    fi
}

# apt-get ARGUMENTS, silent unless it fails.
apt_quietly() {
    local output
    if ! output=$(as_root apt-get -qq -o Dpkg::Use-Pty=0 "$@" </dev/null 2>&1); then
        printf '%s\n' "$output" >&2
        return 1
    fi
}

installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null || true)
missing=()
for package in "${packages[@]}"; do
    grep -qxF "$package installed" <<<"$installed" || missing+=("$package")
done
if ((${#missing[@]} > 0)); then
    echo "Installing ${missing[*]}"
    apt_quietly update
    apt_quietly install -y --no-install-recommends "${missing[@]}"
fi

# run.sh shows the machine's own logs. Some images come without any; installing a package writes one.
has_log() {
    local log
    for log in dpkg.log apt/history.log apt/term.log alternatives.log bootstrap.log; do
        [[ -s /var/log/$log && -r /var/log/$log ]] && return 0
    done
    return 1
}
if ! has_log; then
    echo "Reinstalling ninja-build, so that the machine has a log to show"
    apt_quietly update && apt_quietly install -y --reinstall ninja-build ||
        echo "No machine log: name files when calling run.sh" >&2
fi

"$root/tools/dependencies.sh" & # each of the two waits more than it works
[[ -e $root/build/wine/.ready ]] || "$root/tools/with-wine.sh" true
wait $!
