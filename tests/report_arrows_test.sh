#!/bin/bash
# The report control's folders include only what they may, and window code is only where windows are called.
#   report_arrows_test.sh SOURCE_FOLDER
set -u
cd "$1/report" || exit 1
failed=0

# includes_only PATTERN FILE...: each quoted include of the files matches the pattern.
includes_only() {
    local allowed=$1 found
    shift
    if found=$(grep -Hn '^#include "' "$@" | grep -vE "#include \"($allowed)\""); then
        echo "may not be included here:"
        echo "$found"
        failed=1
    fi
}
items='Report(Item|Style)\.h|zemacore/(String|WideText)\.h'
window='afx[a-z_]*\.h|vkgrafic/[A-Za-z]+\.h|ReportHeaderCtrl\.h'
includes_only "$items|report/model/[A-Za-z]+\.h" model/*.h model/*.cpp
includes_only "$items|report/(model|sort)/[A-Za-z]+\.h" sort/*.h sort/*.cpp
includes_only "$items|$window|report/(model|header)/[A-Za-z]+\.h" header/*.h header/*.cpp

# Models include no header of the system's either.
if grep -HnE '^#include <(windows|wing|winuser|commctrl|unistd|sys/)' model/* sort/*; then
    echo "is no place for the system's headers"
    failed=1
fi

# The rest calls windows: else it belongs into a model. These only pass on what models answer.
for file in header/*.cpp *.cpp; do
    case $file in
        ReportCell.cpp | ReportCtrlModel.cpp | ReportSort.cpp) continue ;;
    esac
    if ! grep -qE '::[A-Z][A-Za-z]+\(|m_hWnd|SendMessage|Afx[A-Z]|dc(\.|->)[A-Z]|m_data->header\.' "$file"; then
        echo "$file makes no window call"
        failed=1
    fi
done
exit $failed
