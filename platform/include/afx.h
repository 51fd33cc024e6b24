// The root class of the framework, its exceptions and its string.
#pragma once

#if defined(UNICODE) || defined(_UNICODE)
#error "The window headers of QmLog take 8-bit text: compile this file without UNICODE and _UNICODE"
#endif

#include "wintypes.h"
#include "zemacore/ZemaApi.h"

#include "afxstr.h"

#define afx_msg // marks a handler that the message map calls

// The root of the framework's classes. Objects have an identity: they are not copied.
class QMPLATFORM_API CObject
{
public:
    virtual ~CObject();
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;

protected:
    CObject() = default;
};

// What the framework throws, always by pointer. Whoever catches one and does not throw it on calls Delete.
class QMPLATFORM_API CException : public CObject
{
public:
    // `autoDelete` tells whether Delete frees the object, that is whether it came from new.
    explicit CException(BOOL autoDelete);

    // Writes what happened into `text` of `size` bytes, cut to fit; FALSE when there is nothing to tell.
    virtual BOOL GetErrorMessage(LPSTR text, UINT size, UINT* helpContext = nullptr) const;

    // Shows the message in a message box; its answer.
    virtual int ReportError(UINT type = MB_OK);

    void Delete();

private:
    BOOL m_autoDelete;
};

class QMPLATFORM_API CMemoryException : public CException
{
public:
    using CException::CException;
    BOOL GetErrorMessage(LPSTR text, UINT size, UINT* helpContext = nullptr) const override;
};

class QMPLATFORM_API CResourceException : public CException
{
public:
    using CException::CException;
    BOOL GetErrorMessage(LPSTR text, UINT size, UINT* helpContext = nullptr) const override;
};

class QMPLATFORM_API CInvalidArgException : public CException
{
public:
    using CException::CException;
    BOOL GetErrorMessage(LPSTR text, UINT size, UINT* helpContext = nullptr) const override;
};

// The user was told already; what was going on ends.
class QMPLATFORM_API CUserException : public CException
{
public:
    using CException::CException;
};

[[noreturn]] QMPLATFORM_API void AfxThrowMemoryException();
[[noreturn]] QMPLATFORM_API void AfxThrowResourceException();
[[noreturn]] QMPLATFORM_API void AfxThrowInvalidArgException();
[[noreturn]] QMPLATFORM_API void AfxThrowUserException();
