// What QmLog.dll exports and its callers import, and the compiler's check of formatted arguments.
#pragma once

#if !defined(_WIN32)
#define QMLOG_API
#elif defined(QMLOG_BUILD)
#define QMLOG_API __declspec(dllexport)
#else
#define QMLOG_API __declspec(dllimport)
#endif

// Checks the arguments from position `first` against the format at position `format`, both counted
// from 1; in an operation of a class `this` is position 1.
#if defined(__clang__)
#define QMLOG_PRINTF(format_, first) __attribute__((format(printf, format_, first)))
#elif defined(__GNUC__)
#define QMLOG_PRINTF(format_, first) __attribute__((format(gnu_printf, format_, first)))
#else
#define QMLOG_PRINTF(format_, first)
#endif
