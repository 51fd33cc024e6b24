#!/bin/bash
# Uses an installed tree as a customer does: by CMake, by pkg-config and, in vain, by other compilers, which take the
# C functions. Runs the test's own programs and the README's under Wine; the README's session must look as it shows.
#   client_test.sh PREFIX WORK_FOLDER
# The client's objects are kept, so that an unchanged installation is not compiled again.
set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
prefix=$1 work=$2
package=$prefix/lib/cmake/QmLog
warnings=(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
readme=$source/../README.md
mkdir -p "$work"

# program_of DOCUMENT NAME: the C++ program in a document, as a source file that changes only with it.
program_of() {
    sed -n '/^```cpp$/,/^```$/{/^```/!p}' "$1" >"$work/$2.cpp.new"
    cmp -s "$work/$2.cpp.new" "$work/$2.cpp" || mv "$work/$2.cpp.new" "$work/$2.cpp"
}
program_of "$readme" readme
program_of "$source/../docs/guide.md" guide
cmake -S "$source/client" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$package/mingw-w64.cmake" \
    -DCMAKE_PREFIX_PATH="$prefix" -DWARNINGS="$(IFS=';'; echo "${warnings[*]}")" \
    -DGUIDE_PROGRAM="$work/guide.cpp" >"$work/configure.log"
cmake --build "$work/build" >"$work/build.log" || { cat "$work/build.log"; exit 1; }

read -ra flags < <(PKG_CONFIG_PATH=$prefix/lib/pkgconfig pkg-config --cflags --libs qmlog)
x86_64-w64-mingw32-g++-posix "${warnings[@]}" "$work/readme.cpp" -o "$work/readme.exe" "${flags[@]}"

# Without the headers' own word, the compiler's errors would be pages long and the linker's even longer.
for wide in -DUNICODE -D_UNICODE; do
    ! x86_64-w64-mingw32-g++-posix "$wide" -fsyntax-only -x c++ "${flags[@]}" - <<<'#include <afxwin.h>' 2>"$work/wide.err"
    grep -q 'error: #error "The window headers of QmLog take 8-bit text' "$work/wide.err"
done

# A C89 program as other compilers for Windows make it: another ABI, another linker, no library of the system's. The
# header is C++ too, with whatever the compiler calls that.
foreign=(clang --target=x86_64-pc-windows-msvc -ffreestanding -O1 -Wall -Wextra -Werror -pedantic -I "$prefix/include")
"${foreign[@]}" -std=c89 -c "$source/client/foreign.c" -o "$work/foreign.obj"
"${foreign[@]}" -std=c++98 -fsyntax-only -x c++ - <<<'#include <QmLogC.h>'
sed -n '/^```c$/,/^```$/{/^```/!p}' "$source/../docs/guide.md" | "${foreign[@]}" -std=c89 -fsyntax-only -x c -
lld-link /nologo /entry:mainCRTStartup /subsystem:console /nodefaultlib "/out:$work/foreign.exe" "$work/foreign.obj" \
    "$prefix/lib/QmLog.lib"
x86_64-w64-mingw32-gcc-posix -std=c89 -pedantic "${warnings[@]}" -nostdlib -e mainCRTStartup "$source/client/foreign.c" \
    -o "$work/foreign_gcc.exe" "${flags[@]}"

# What CMake knows of other compilers: each is refused in one sentence.
printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'find_package(QmLog REQUIRED)' >"$work/find.cmake"
while read -r id system pointer variable; do
    ! cmake -DCMAKE_CXX_COMPILER_ID="$id" -DCMAKE_SYSTEM_NAME="$system" -DCMAKE_SIZEOF_VOID_P="$pointer" \
        -D"$variable"=1 -DCMAKE_PREFIX_PATH="$prefix" -P "$work/find.cmake" 2>"$work/find.err"
    reason=$(tr -s ' \n' ' ' <"$work/find.err")
    [[ $reason == *"can be used with MinGW-w64 GCC for 64-bit Windows, not with $id for $system"* ]]
done <<'END'
GNU Linux 8 UNIX
MSVC Windows 8 MSVC
Clang Windows 8 MSVC
Clang Windows 8 MINGW
GNU Windows 4 MINGW
END

export WINEPATH="Z:${prefix//\//\\}\\bin"
run() { "$source/../tools/run-wine.sh" "$@"; }
log_folder() { # NAME, empty and to be used by what runs next
    rm -rf "${work:?}/$1"
    mkdir -p "$work/$1"
    export QM_LOG_FOLDER="Z:${work//\//\\}\\$1\\"
}
log_folder logs
run "$work/build/client.exe"
run "$prefix/bin/logtool.exe" verify

log_folder wrapper_logs
run "$work/build/wrapper.exe" "$QM_LOG_FOLDER\\Wrapper.LOG"
run "$prefix/bin/logtool.exe" verify

for program in foreign foreign_gcc; do
    log_folder "${program}_logs"
    QM_RUN_OUTPUT_PATH=$QM_LOG_FOLDER run "$work/$program.exe"
    diff <(printf 'Started\nLoad job list\n12 jobs\nDone') "$work/${program}_logs/Foreign.LOG"
    diff <(printf '\n----------\n100%%!') "$work/${program}_logs/Foreign.TXT"
    run "$prefix/bin/logtool.exe" verify
done

log_folder readme_logs
run "$work/readme.exe"
run "$prefix/bin/logtool.exe" cat --numbers | diff - <(sed -n '/^```text$/,/^```$/{/^```/!p}' "$readme")

# Run again, the program goes on in lines of its own, and its blocks leave no blank row.
run "$work/readme.exe"
[[ $(run "$prefix/bin/logtool.exe" cat | wc -l) == 14 ]]
run "$prefix/bin/logtool.exe" verify | grep -qx '2 logs, 14 rows: no damage'
