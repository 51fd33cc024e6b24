// The application-data manager: where a host keeps its logs and its profile, and how paths are split.
#pragma once

#include "wintypes.h"
#include "zemacore/ZemaApi.h"

// A path taken apart. Each part is NUL-terminated; together they are no longer than the path was.
struct AppDataPath
{
    char drive[MAX_PATH];     // "C:", or empty
    char directory[MAX_PATH]; // up to and including its last separator, or empty
    char name[MAX_PATH];      // file name without extension
    char extension[MAX_PATH]; // with its dot, or empty
};

// Folders and paths.
class QMPLATFORM_API IAppDataAccess
{
public:
    virtual ~IAppDataAccess();

    // Writes the log folder, ending with a backslash, into `folder` (`size` characters, the NUL included)
    // and creates the folder when it is missing. Answers the characters written, the NUL not counted;
    // 0, with an empty text, when there is no folder, it does not fit or cannot be made.
    virtual DWORD GetLogFolder(char* folder, DWORD size) = 0;

    // Likewise the folder for messages about failures where there is no log folder. By default there is none.
    virtual DWORD GetFallbackFolder(char* folder, DWORD size);

    // Takes `path` apart. False, with empty parts, for a null path or one of MAX_PATH characters or more.
    virtual bool SplitPath(const char* path, AppDataPath& parts);
};

// Values of the user's profile by section and key.
class QMPLATFORM_API IProfileStore
{
public:
    virtual ~IProfileStore();

    // Answers `missing` when the key is absent or holds no number.
    virtual int GetInteger(const char* section, const char* key, int missing) = 0;
    virtual bool SetInteger(const char* section, const char* key, int value) = 0;
    virtual COLORREF GetColor(const char* section, const char* key, COLORREF missing) = 0;
    virtual bool SetColor(const char* section, const char* key, COLORREF value) = 0;

    // True also when there was no such key.
    virtual bool RemoveKey(const char* section, const char* key) = 0;

    // Writes the value into `text` (`size` characters, the NUL included), cut to fit, and answers the whole
    // value's length; 0, with an empty text, when the key is absent. A value is one line without quotes
    // around it. By default a store keeps no texts.
    virtual DWORD GetText(const char* section, const char* key, char* text, DWORD size);
    virtual bool SetText(const char* section, const char* key, const char* value);
};

// What a host provides. The objects answered stay owned by the manager; null where there is none.
class QMPLATFORM_API IAppDataManager
{
public:
    virtual ~IAppDataManager();
    virtual IAppDataAccess* GetAccess() = 0;
    virtual IProfileStore* GetProfileStore() = 0;
};

class QMPLATFORM_API AppDataManager
{
public:
    // The manager in use; null when there is none. On Windows the platform's own is in use until a host
    // sets another: its log folder is the environment variable QM_LOG_FOLDER when set and not empty, else
    // %LOCALAPPDATA%\QmLog\Logs\; its profile the INI file QM_PROFILE when set and not empty, else
    // %APPDATA%\QmLog\Profile.ini, made with its folder when first written to. The environment is asked at
    // each call. Integers are stored decimal, colours as 0x00BBGGRR; both are read either way.
    static IAppDataManager* LoadAppDataManager();

    // Puts `manager`, which must outlive its use, in the place of the present one. Null: there is none.
    static void SetAppDataManager(IAppDataManager* manager);
};
