// The application object of window tests.
#pragma once

#include "afxwin.h"

#include <gtest/gtest.h>

// Fails the test in which an exception leaves a message handler. Without such an object the framework ends
// the message, and nobody notices.
class WindowApp : public CWinApp
{
public:
    LRESULT ProcessWndProcException(CException* exception, const MSG* message) override
    {
        char text[200] = "no text";
        exception->GetErrorMessage(text, sizeof(text));
        ADD_FAILURE() << "an exception left the handler of message " << message->message << ": " << text;
        return message->message == WM_CREATE ? -1 : 0;
    }
};

// In its place, where a test throws on purpose.
class SilentApp : public CWinApp
{
public:
    LRESULT ProcessWndProcException(CException*, const MSG* message) override
    {
        return message->message == WM_CREATE ? -1 : 0;
    }
};
