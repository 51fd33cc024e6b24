# find_package(QmLog) gives QmLog::QmLog, which brings QmLog::QmPlatform.
include(${CMAKE_CURRENT_LIST_DIR}/QmLogTargets.cmake)
