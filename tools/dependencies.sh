#!/bin/bash
# Brings the libraries that we build on into build/deps: headers, sources and licences. cmake/Dependencies.cmake takes
# them from there. Silent unless it fails, and quick when all is there.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
deps=$root/build/deps

# Debian's source packages: name, archive, its SHA-256, the folder in it, its licence.
sources=(
    "pcre2 pcre2_10.42.orig.tar.gz c33b418e3b936ee3153de2c61cc638e7e4fe3156022a5c77d0711bcbb9d64f1f pcre2-10.42 LICENCE"
    "sqlite3 sqlite3_3.40.1.orig.tar.xz aaa776260ab4dc976db34aa7891819484c8676b5b2783123ebc6301e2ca5d655 sqlite3-3.40.1 LICENSE.md"
    "utf8proc utf8proc_2.8.0.orig.tar.gz a0a60a79fe6f6d54e7d411facbfcc867a6e198608f2cd992490e46f04b1bcecc utf8proc-2.8.0 LICENSE.md"
)
# Folders below /usr/include, and the package whose licence goes with each.
headers=(
    "CLI libcli11-dev"
    "date libhowardhinnant-date-dev"
    "nlohmann nlohmann-json3-dev"
)

# Source packages are listed by what the machine installs from, read into a folder of ours: the machine's own lists
# stay as they are.
fetch() { # NAME, into the current folder
    local work=$deps/apt options
    if [[ ! -e $work/ready ]]; then
        mkdir -p "$work/parts" "$work/lists/partial" "$work/cache/archives/partial"
        find /etc/apt/sources.list.d -name '*.sources' -exec cp -t "$work/parts" {} +
        sed -i 's/^Types:.*/Types: deb-src/' "$work/parts"/*.sources 2>/dev/null || true
        cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null |
            sed -n 's/^deb[[:blank:]]/deb-src /p' >"$work/parts/machine.list" || true
    fi
    options=(-qq -o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$work/parts"
        -o "Dir::State::lists=$work/lists" -o "Dir::Cache=$work/cache")
    # Some of the machine's sources may have no source packages, so what counts is whether ours comes.
    [[ -e $work/ready ]] || apt-get "${options[@]}" update || true
    apt-get "${options[@]}" source --download-only --tar-only "$1"
    touch "$work/ready"
}

# SQLite's sources as one file, which is how they are meant to be compiled. Its configure script would ask this system
# for a quarter of a minute about things that have no part in that file.
make_sqlite3() { # FOLDER
    mkdir "$1/one-file"
    make -C "$1/one-file" -f ../main.mk TOP=.. BCC=cc TCC=cc sqlite3.c
    mv "$1"/one-file/sqlite3.[ch] "$1"
    rm -r "$1"/*/ # 120 MB
}

bring_source() { # NAME ARCHIVE SUM FOLDER LICENCE
    local output
    if [[ -e $deps/$4/.ready ]]; then
        return
    fi
    mkdir -p "$deps"
    cd "$deps"
    if ! sha256sum --status -c - <<<"$3  $2" 2>/dev/null && ! output=$(fetch "$1" 2>&1); then
        printf '%s\n' "$output" "dependencies.sh: the source package $1 cannot be fetched" >&2
        return 1
    fi
    if ! sha256sum --status -c - <<<"$3  $2"; then
        echo "dependencies.sh: $deps/$2 is not the archive that we build on: its SHA-256 differs" >&2
        return 1
    fi
    rm -rf "${deps:?}/$4"
    tar -xf "$2" "$4"
    if declare -F "make_$1" >/dev/null && ! output=$("make_$1" "$4" 2>&1); then
        printf '%s\n' "$output" "dependencies.sh: $1 cannot be made ready" >&2
        return 1
    fi
    cp "$4/$5" "licences/$1.txt"
    touch "$4/.ready"
}

mkdir -p "$deps/include" "$deps/licences"
for entry in "${headers[@]}"; do
    read -r folder package <<<"$entry"
    # One by one: the cross compiler must not see the other headers of this system.
    ln -sfn "/usr/include/$folder" "$deps/include/$folder"
    cp "/usr/share/doc/$package/copyright" "$deps/licences/$folder.txt"
done
for entry in "${sources[@]}"; do
    read -r -a fields <<<"$entry"
    bring_source "${fields[@]}"
done
rm -rf "$deps/apt"
