#include "afxwin.h"

#include <cstdio>

CObject::~CObject() = default;

CException::CException(BOOL autoDelete) : m_autoDelete(autoDelete) {}

static BOOL Tell(const char* message, LPSTR text, UINT size)
{
    if (size == 0)
        return FALSE;
    std::snprintf(text, size, "%s", message);
    return TRUE;
}

BOOL CException::GetErrorMessage(LPSTR text, UINT size, UINT*) const
{
    if (size > 0)
        text[0] = '\0';
    return FALSE;
}

int CException::ReportError(UINT type)
{
    char text[256];
    return AfxMessageBox(GetErrorMessage(text, sizeof(text)) ? text : "An unknown error has occurred.", type);
}

void CException::Delete()
{
    if (m_autoDelete)
        delete this;
}

BOOL CMemoryException::GetErrorMessage(LPSTR text, UINT size, UINT*) const
{
    return Tell("Out of memory.", text, size);
}

BOOL CResourceException::GetErrorMessage(LPSTR text, UINT size, UINT*) const
{
    return Tell("A required resource was unavailable.", text, size);
}

BOOL CInvalidArgException::GetErrorMessage(LPSTR text, UINT size, UINT*) const
{
    return Tell("An invalid argument was encountered.", text, size);
}

// One object of each for all throws: there may be no memory for another.
template <typename Exception> [[noreturn]] static void Throw()
{
    static Exception exception(FALSE);
    throw &exception;
}

void AfxThrowMemoryException()
{
    Throw<CMemoryException>();
}

void AfxThrowResourceException()
{
    Throw<CResourceException>();
}

void AfxThrowInvalidArgException()
{
    Throw<CInvalidArgException>();
}

void AfxThrowUserException()
{
    Throw<CUserException>();
}
