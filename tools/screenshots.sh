#!/bin/bash
# Makes the pictures in docs/screenshots from the sample session and the examples.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# On a virtual display: a column in the midst of a drag.
if [[ ${1-} == drag ]]; then
    work=$2
    . "$root/tools/wine-env.sh"
    wine "$work/report/report.exe" "$(windows_path "$work/Project")" --layout "$(windows_path "$work/report.ini")" \
        </dev/null >"$work/drag.log" 2>&1 &
    until xdotool search --name 'Project - report' >"$work/window"; do sleep 0.2; done
    sleep 1
    xdotool mousemove 420 50 mousedown 1
    for x in 380 340 275; do xdotool mousemove "$x" 52; sleep 0.2; done
    import -window root -crop 700x195+0+25 +repage "$work/drag.bmp"
    xdotool key Escape mouseup 1 key alt+F4
    wait
    exit
fi

# On a virtual display: a cell that offers choices.
if [[ ${1-} == table ]]; then
    work=$2
    . "$root/tools/wine-env.sh"
    wine "$work/report/report.exe" "$(windows_path "$work/orders.csv")" --layout "$(windows_path "$work/table.ini")" \
        --size 640x260 </dev/null >"$work/table.log" 2>&1 &
    until xdotool search --name 'orders.csv - report' >"$work/window"; do sleep 0.2; done
    sleep 1
    xdotool key --delay 50 Right Right F2
    xdotool type --delay 50 'sent'
    xdotool key --delay 50 Return Escape Down F2 alt+Down
    sleep 0.5
    import -window root -crop 632x232+104+124 +repage "$work/table.bmp"
    xdotool key --delay 200 Escape Escape alt+F4 n
    wait
    exit
fi

# With an engine: a session in it.
if [[ ${1-} == engine ]]; then
    work=$2
    . "$root/tools/wine-env.sh"
    export LOGTOOL_EXE=$root/build/windows/bin/logtool.exe
    "$root/tools/logtool.sh" --folder "$work/Logs" ship --to "$QM_ENGINE_URL" --create --session Nightly --machine press-7 >"$work/engine.log"
    "$root/tools/run-wine.sh" "$root/build/windows/bin/LogDesk.exe" \
        --open "clickhouse://${QM_ENGINE_URL#http://}/?session=Nightly" --screenshot 'L:\engine.bmp' \
        --steps size:900x420,next-message-error
    exit
fi

# On a virtual display: the dialogs of messages, one after the other.
if [[ ${1-} == dialogs ]]; then
    work=$2
    . "$root/tools/wine-env.sh"
    QM_PROFILE=$(windows_path "$work/Profile.ini")
    export QM_PROFILE
    # take NAME TITLE
    take() {
        local window
        until window=$(xdotool search --name "$2"); do sleep 0.2; done
        sleep 1.5
        import -window "${window%%$'\n'*}" "$work/$1.bmp"
    }
    keys() { xdotool key --delay 50 "$@"; }
    wine "$root/build/windows/bin/LogDesk.exe" "$(windows_path "$work/depot.log")" </dev/null >"$work/dialogs.log" 2>&1 &
    until xdotool search --name 'LogDesk$' >"$work/window"; do sleep 0.2; done
    sleep 3
    keys Home ctrl+f
    until xdotool search --name '^Find$' >"$work/window"; do sleep 0.2; done
    xdotool type --delay 30 'disk is full'
    keys Return F3
    take find '^Find$'
    keys Escape alt+c
    take configuration '^Log Configuration$'
    keys Escape shift+F10 i
    take filter '^Edit Filter$'
    keys Escape alt+m Down Down Down Down Down Return
    take columns '^Column Picker$'
    keys Escape
    xdotool mousemove 430 300 click --repeat 2 --delay 60 1
    take message '^Log Message$'
    keys Escape alt+p alt+m y # errors only, without previews
    sleep 1
    xdotool mousemove 500 163 click 1
    sleep 1
    xdotool mousemove 500 198
    sleep 1.5
    import -window root -crop 650x132+62+132 +repage "$work/tip.bmp"
    keys alt+F4
    wait
    exit
fi
"$root/tools/setup.sh"
"$root/tools/build.sh" windows

# A drive of its own, so that the title shows a plain folder.
. "$root/tools/wine-env.sh"
work=$(mktemp -d)
trap 'rm -f "$WINEPREFIX/dosdevices/l:"; rm -rf "$work"' EXIT
mkdir "$work/Logs"
ln -sfn "$work" "$WINEPREFIX/dosdevices/l:"

# picture NAME STEPS: of a fresh session's log text.
picture() {
    "$root/tools/run-wine.sh" "$root/build/windows/bin/LogDesk.exe" --start 'L:\Logs' \
        --screenshot "L:\\$1.bmp" --steps "size:760x420,sample,messages:off,$2"
    shrink "$1"
}
shrink() { convert "$work/$1.bmp" -alpha off -strip -define png:compression-level=9 "$root/docs/screenshots/$1.png"; }
mkdir -p "$root/docs/screenshots"
picture opened home
picture unfolded tab:1,home,next-fold,unfold-all,next-fold,unfold-all
picture found home,find:select
picture error home,next-error,up:6,fold
picture during home,next-error,during
picture dark 'messages:on,size:900x640,split:42,dark:on,home,next-error,find:sql,message:41'
picture messages 'messages:on,size:900x640,split:42,message:41,show-in-log,show-in-messages'
echo 'compiling' | wine "$root/build/windows/bin/logtool.exe" --folder 'L:\Logs' write Build
"$root/tools/run-wine.sh" "$root/build/windows/bin/LogDesk.exe" 'L:\Logs' --screenshot 'L:\notice.bmp' \
    --steps size:760x240,messages:off,home
shrink notice

# A session with a clock, and a pause in it.
timed() { wine "$root/build/windows/bin/logtool.exe" --folder 'L:\Times' write --times "$@"; }
printf '12 orders\nto depot 3\n' | timed Main --block 'Orders taken over'
sleep 0.4
printf 'connecting to depot 3\ntried 3 times\n' | timed Run --block 'Delivery'
sleep 12
printf 'depot 3 does not answer\n' | timed Run --block 'Delivery failed' --kind error
printf 'the next run is at 22:00\n' | timed Main
"$root/tools/run-wine.sh" "$root/build/windows/bin/LogDesk.exe" 'L:\Times' --screenshot 'L:\times.bmp' \
    --steps size:900x300,messages:off,next-error
shrink times

# A text log: work of a few threads, some of which fails.
text_log() {
    local number level
    for number in {100..399}; do
        level=INFO
        ((number % 7 != 3)) || level=DEBUG
        ((number % 11 != 5)) || level=WARN
        ((number % 23 != 9)) || level=ERROR
        printf '2026-03-31 09:%02d:%02d,%03d %s [worker-%d] com.depot.Orders: ' \
            $((number / 60)) $((number % 60)) $((number * 37 % 1000)) "$level" $((number % 4))
        case $level in
            ERROR) printf 'order %d is lost\njava.io.IOException: the disk is full\n\tat com.depot.Store.write(Store.java:88)\n' "$number" ;;
            WARN) printf 'order %d waits for the store\n' "$number" ;;
            *) printf 'order %d stored\n' "$number" ;;
        esac
    done
}
text_log >"$work/depot.log"
"$root/tools/run-wine.sh" "$root/build/windows/bin/LogDesk.exe" 'L:\depot.log' --screenshot 'L:\textlog.bmp' \
    --steps size:900x420,level:warning,message:1,next-message-error
shrink textlog
"$root/tools/engine.sh" with "$0" engine "$work"
shrink engine
WINE_GRAPHICS=x11 "$root/tools/with-wine.sh" "$0" dialogs "$work"
for name in find configuration filter columns message tip; do shrink "$name"; done

# The report control, by its examples.
cmake --install "$root/build/windows" --prefix "$work/sdk" >"$work/install.log"
export WINEPATH="Z:${work//\//\\}\\sdk\\bin"
cmake -S "$work/sdk/share/doc/QmLog/examples" -B "$work" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$work/sdk/lib/cmake/QmLog/mingw-w64.cmake" -DCMAKE_PREFIX_PATH="$work/sdk" >"$work/examples.log"
cmake --build "$work" >>"$work/examples.log"
"$root/tools/run-wine.sh" "$work/gallery/gallery.exe" 'L:\gallery.bmp'
shrink gallery
printf '[Folders]\nSubItems=4\nColumns=0 260  1 90  2 130\nSort=1\nAscending=0\nHiddenColumns=1\nPlace=0 0 700 300\n' >"$work/report.ini"
mkdir "$work/Project"
cp -r "$root/include/." "$root/report" "$root/docs" "$work/Project"
"$root/tools/run-wine.sh" "$work/report/report.exe" 'L:\Project' --layout 'L:\report.ini' --size 700x300 \
    --screenshot 'L:\report.bmp'
shrink report
for number in {4120..4134}; do
    printf '%d,"Depot %d, %s",%s,%d.%02d,2026-03-%02d\n' "$number" $((number * 7 % 9 + 1)) \
        "$(cut -d ' ' -f $((number % 4 + 1)) <<<'north south east west')" \
        "$(cut -d ' ' -f $((number * 5 % 3 + 1)) <<<'open packed sent')" $((number * 31 % 900)) $((number * 7 % 100)) $((number % 28 + 1))
done | sed '1 i order,customer,state,amount,date' >"$work/orders.csv"
WINE_GRAPHICS=x11 "$root/tools/with-wine.sh" "$0" table "$work"
shrink table
WINE_GRAPHICS=x11 "$root/tools/with-wine.sh" "$0" drag "$work"
shrink drag
