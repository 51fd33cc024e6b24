#!/bin/bash
# Each folder includes only what it may, models no window header, and window code is only where windows are called.
#   arrows_test.sh SOURCE_FOLDER
set -u
cd "$1" || exit 1
shopt -s extglob nullglob
failed=0

# includes_only PATTERN FILE...: each quoted include of the files matches the pattern.
includes_only() {
    local allowed=$1 found
    shift
    if (($# == 0)); then
        echo "no files for $allowed"
        failed=1
    elif found=$(grep -Hn '^#include "' "$@" | grep -vE "#include \"($allowed)\""); then
        echo "may not be included here:"
        echo "$found"
        failed=1
    fi
}

# without_system FILE...: includes no header of the system's either.
without_system() {
    local found
    if found=$(grep -HnE '^#include <(windows|wing|winuser|commctrl|unistd|sys/)' "$@"); then
        echo "is no place for the system's headers:"
        echo "$found"
        failed=1
    fi
}

# calls_windows FILE...: else the code belongs into a model.
calls_windows() {
    local file
    for file; do
        if ! grep -qE '::[A-Z][A-Za-z]+\(|m_hWnd|SendMessage|Afx[A-Z]|dc(\.|->)[A-Z]|m_data->header\.' "$file"; then
            echo "$file makes no window call"
            failed=1
        fi
    done
}

# The platform: the core knows no windows, and none of its libraries knows the log library.
core='wintypes\.h|zemacore/\w+\.h'
framework='afx\w*\.h|atltypes\.h|mfc/\w+\.h'
graphics='vkgrafic/\w+\.h'
common='qm(common|commandline|textctrl|flattabctrl)/\w+\.h'
includes_only "$core|Windows\w+\.h" platform/zemacore/* platform/include/zemacore/*
includes_only "$core|vkservices/\w+\.h|Windows\w+\.h" platform/vkservices/* platform/include/vkservices/*
includes_only "$core|$graphics" platform/vkgrafic/* platform/include/vkgrafic/*
includes_only "$core|$framework|$graphics" platform/mfc/* platform/include/mfc/* platform/include/a*.h
includes_only "$core|$framework|$graphics|$common|QmText\w+\.h|platform_resource\.h" \
    platform/qm*/* platform/include/qm*/*

# The exported headers of the log files are free of windows, and those of the report control know no logs.
logs='QmLog(Api|C|Folder|Look|Row|Writer|Reader|Times|Verify|OutputFile)\.h'
logWindows='QmHandler\.h|QmLog(TextCtrl|TextCtrlEntries|Browser)\.h'
items='Report(Item|Style)\.h|zemacore/(String|WideText)\.h'
includes_only "$logs|zemacore/String\.h" include/QmLog!(TextCtrl|TextCtrlEntries|Browser|State|Watch).h
includes_only 'QmLogApi\.h|zemacore/String\.h' include/LogMsg.h include/LogViewer.h
includes_only 'QmLogApi\.h|LogMsg\.h|wintypes\.h' include/QmLogState.h
includes_only "$logs|$logWindows|$framework|$common" include/QmHandler.h include/QmLog{TextCtrl,TextCtrlEntries,Browser}.h
includes_only "QmLogApi\.h|Report\w+\.h|wintypes\.h|zemacore/String\.h|$framework" include/Report!(CtrlLog).h
messages='(LogMsg|LogViewer|QmHandler|ReportCtrl)\.h'
includes_only "QmLogApi\.h|$messages" include/{ReportCtrlLog,QmLogWatch}.h

# The log files know no windows; the log view is told of them by a source of rows.
includes_only "$logs|$core|vkservices/\w+\.h|logfiles/\w+\.h" logfiles/*.{h,cpp}
models=(logview/!(QmLog*|ShownRows*|FileLook*|ReaderRows*|SessionStart*).@(h|cpp) logview/{find,merge}/*.{h,cpp})
includes_only 'QmLog(Look|Row)\.h|logview/(\w+/)?\w+\.h|textmatch/\w+\.h|vkgrafic/(TextCells|UiColors)\.h|zemacore/WideText\.h' "${models[@]}"
includes_only "$logs|$core|logfiles/\w+\.h|logview/\w+\.h" logview/@(FileLook|ReaderRows|SessionStart).{h,cpp}
includes_only "$logs|$logWindows|$framework|$graphics|$common|zemacore/WideText\.h|textmatch/\w+\.h|resources/\w+\.h|logview/(\w+/)?\w+\.h" \
    logview/QmLog*.{h,cpp} logview/ShownRows.h
without_system "${models[@]}"
calls_windows logview/QmLogTextCtrl*.cpp

# What finds texts knows nothing of what they are.
includes_only 'textmatch/\w+\.h' textmatch/*.{h,cpp}
without_system textmatch/*.{h,cpp}

# The report control: its models see items only, its windows see the models.
model='report/model/\w+\.h'
includes_only "$items|$model" report/model/*.{h,cpp}
includes_only "$items|$model|report/sort/\w+\.h" report/sort/*.{h,cpp}
includes_only "$items|ReportHeaderCtrl\.h|$core|$framework|$graphics|$model|report/header/\w+\.h" report/header/*.{h,cpp}
includes_only "Report\w+\.h|$core|$framework|$graphics|qmcommon/QmClipboard\.h|report/(\w+/)?\w+\.h" report/*.{h,cpp}
without_system report/{model,sort}/*.{h,cpp}
# These only pass on what models answer, or raise the framework's exception.
calls_windows report/header/*.cpp report/!(ReportCell|ReportCtrlModel|ReportSort).cpp

# The message viewer: its models know messages, and the records of the report control's items.
includes_only "(LogMsg|QmLogState|ReportItem)\.h|qmcommandline/\w+\.h|qmcommon/Qm(Entry|Command|ReportWriterXML)\.h|$core|textmatch/\w+\.h|logreport/model/\w+\.h" logreport/model/*.{h,cpp}
without_system logreport/model/*.{h,cpp}
includes_only "$messages|Report(CtrlLog|HeaderCtrl|SubItemListCtrl)\.h|QmLog(State|Watch)\.h|$core|$framework|$graphics|$common|logreport/(\w+/)?\w+\.h|resources/\w+\.h" \
    logreport/*.{h,cpp}
calls_windows logreport/!(ReportCtrlLogState).cpp

# The programs use what a customer gets. What they need no window for is in libraries of their own, for the tests.
includes_only "$core|commandline/\w+\.h" host/commandline/*.{h,cpp}
includes_only "zemacore/\w+\.h|wintypes\.h|commandline/UsageError\.h|engine/\w+\.h" host/engine/*.{h,cpp}
without_system host/engine/!(WinHttp*).{h,cpp}
includes_only "LogMsg\.h|LogViewer\.h|engine/\w+\.h|engineview/\w+\.h|msgservice/(\w+/)?\w+\.h" host/engineview/*.{h,cpp}
without_system host/engineview/*.{h,cpp}
includes_only "LogMsg\.h|LogViewer\.h|$logs|$core|textmatch/\w+\.h|msgservice/(\w+/)?\w+\.h" host/msgservice/{,*/}*.{h,cpp}
includes_only "$logs|msgservice/session/\w+\.h|sessionwalk/\w+\.h" host/sessionwalk/*.{h,cpp}
without_system host/sessionwalk/*.{h,cpp}
includes_only "LogMsg\.h|$logs|$core|commandline/\w+\.h|engine/\w+\.h|engineview/\w+\.h|logtool/\w+\.h|textmatch/\w+\.h|msgservice/(\w+/)?\w+\.h|sessionwalk/\w+\.h" host/logtool/*.{h,cpp}
viewer='(LogMsg|LogViewer|ReportCtrlLog|QmLogState)\.h'
parts='(commandline|engine|engineview|logdesk)/\w+\.h|msgservice/(\w+/)?\w+\.h'
deskCore=$(sed -n '/add_library(logdesk_core/,/)/s/^ *\(\w*\.cpp\).*/\1/p' host/logdesk/CMakeLists.txt)
for file in host/logdesk/*.cpp; do
    if grep -qx "${file##*/}" <<<"$deskCore"; then
        includes_only 'LogMsg\.h|qmcommon/QmCommand(Shortcut)?\.h|(commandline|engine|engineview|logdesk)/\w+\.h|msgservice/\w+\.h' "$file"
        without_system "$file"
    else
        includes_only "$logs|$logWindows|$viewer|$core|$framework|$graphics|$common|$parts|Version\.h" "$file"
        calls_windows "$file"
    fi
done
exit $failed
