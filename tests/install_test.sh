#!/bin/bash
# Installs a build to a fresh prefix, which the tests of what a customer gets use, and looks at what is not code.
#   install_test.sh BUILD_FOLDER PREFIX
set -euo pipefail
build=$1 prefix=$2

rm -rf "$prefix"
mkdir -p "$prefix"
cmake --install "$build" --prefix "$prefix" >"$prefix.log"

faults=0
fault() {
    echo "$*"
    faults=$((faults + 1))
}

# The links of the documents lead somewhere.
while IFS=: read -r document link; do
    target=${link#](}
    target=${target%)}
    [[ $target == *://* || -e $(dirname "$document")/${target%%#*} ]] || fault "$document: $target leads nowhere"
done < <(grep -roE --include='*.md' '\]\([^)]+\)' "$prefix/share")

# Each library that is in what is shipped has its licence.
for licence in gcc GPL-3 mingw-w64 CLI pcre2 sqlite3 utf8proc; do
    [[ -s $prefix/share/doc/QmLog/licences/$licence.txt ]] || fault "the licence of $licence is missing"
done

((faults == 0))
