#!/bin/bash
# Checks the installed Windows files: their protections, their symbols, what they import and what they export.
#   hardening_test.sh PREFIX
# The DLLs may export only what the headers name.
set -euo pipefail
bin=$1/bin
headers=$1/include
prefix=x86_64-w64-mingw32
products=(QmLog.dll QmPlatform.dll LogDesk.exe logtool.exe)
exporting=(QmLog.dll QmPlatform.dll)

# The system's DLLs that we may need; all else must lie in the folder.
system_dlls='advapi32|comctl32|comdlg32|gdi32|kernel32|msvcrt|ole32|shell32|user32|winhttp|ws2_32'

faults=0
fault() {
    echo "$*"
    faults=$((faults + 1))
}

# The words of the headers' code, one a line; comments do not declare anything.
words=$(find "$headers" -name '*.h' -exec sed 's://.*::' {} + | grep -oE '[A-Za-z_][A-Za-z0-9_]*' | sort -u)

for file in "${products[@]}"; do
    if [[ ! -s $bin/$file ]]; then
        fault "$file: missing"
        continue
    fi
    header=$($prefix-objdump -p "$bin/$file")

    for flag in DYNAMIC_BASE HIGH_ENTROPY_VA NX_COMPAT; do
        grep -qw "$flag" <<<"$header" || fault "$file: not marked $flag"
    done

    # Symbols lie in a file of their own, and by way of the stripped one a debugger finds them.
    [[ -z $($prefix-nm "$bin/$file" 2>/dev/null) ]] || fault "$file: is not stripped"
    symbols=$($prefix-nm "$bin/.debug/$file.debug")
    grep -qw __stack_chk_fail <<<"$symbols" || fault "$file: built without stack protector"
    lines=$(awk '$2 == "T" { print $1 }' <<<"$symbols" | $prefix-addr2line -e "$bin/$file")
    [[ $lines == *.cpp:* ]] || fault "$file: its symbols are not found"

    while read -r dll; do
        [[ ${dll,,} =~ ^($system_dlls)\.dll$ || -e $bin/$dll ]] || fault "$file: imports $dll"
    done < <(sed -n 's/^\tDLL Name: //p' <<<"$header")
done

# The qualified name of an export is taken apart at its colons: each part must be a word of the headers, which know a
# system call without the A of its 8-bit form. Operators are not words, a destructor is the name of its class, and
# nothing of the standard library is ours but the descriptions of exceptions that a file catches: the compiler exports
# those unasked.
qualified_names() {
    sed -E 's/^((construction )?vtable|VTT|typeinfo|typeinfo name|guard variable) for //
            s/^(non-virtual|virtual) thunk to //; s/-in-.*//
            s/operator.*//; s/[([].*//; :inner; s/<[^<>]*>//; t inner'
}
for file in "${exporting[@]}"; do
    [[ -s $bin/$file ]] || continue
    exports=$($prefix-objdump -p "$bin/$file" | sed -n '/Name Pointer\] Table/,/^$/s/^\t\[ *[0-9]*\] //p' |
        $prefix-c++filt | grep -v '^typeinfo for std::' | sort -u)
    [[ -n $exports ]] || fault "$file: exports nothing"
    while IFS= read -r name; do
        fault "$file: exports $name, which no header names"
    done < <(paste <(qualified_names <<<"$exports") - <<<"$exports" | awk -F '\t' '
        NR == FNR { words[$0]; next }
        {
            count = split($1, parts, /[:~]+/)
            for (i = 1; i <= count; ++i) {
                narrow = parts[i]
                sub(/A$/, "", narrow)
                if (parts[i] != "" && !(parts[i] in words) && !(narrow in words)) { print $2; next }
            }
        }' <(printf '%s\n' "$words") -)
done

((faults == 0))
