// What QmPlatform.dll exports and its callers import; nothing where the platform is linked statically.
#pragma once

#if !defined(_WIN32)
#define QMPLATFORM_API
#elif defined(QMPLATFORM_BUILD)
#define QMPLATFORM_API __declspec(dllexport)
#else
#define QMPLATFORM_API __declspec(dllimport)
#endif
