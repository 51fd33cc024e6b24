// All that a message answers, as a text that tests compare.
#pragma once

#include "LogMsg.h"

#include <sstream>
#include <string>

// Texts that are copied out, texts that are pointed to, numbers, the indents for two given values, the level.
inline std::string ToldMessage(const ILogMsgData& message)
{
    std::ostringstream told;
    told << message.GetTimestamp();
    for (const auto get : {&ILogMsgData::GetSource, &ILogMsgData::GetTopic, &ILogMsgData::GetText1,
                           &ILogMsgData::GetText2, &ILogMsgData::GetWho})
    {
        ZEMA::String text("before");
        (message.*get)(text);
        told << ' ' << text.c_str();
    }
    for (const auto get :
         {&ILogMsgData::GetLevelText, &ILogMsgData::GetBody, &ILogMsgData::GetText, &ILogMsgData::GetModule,
          &ILogMsgData::GetRuntimeFile, &ILogMsgData::GetRuntimeContext})
        told << ' ' << (message.*get)();
    for (const auto get : {&ILogMsgData::GetErrorNumber, &ILogMsgData::GetLine, &ILogMsgData::GetSourceLine,
                           &ILogMsgData::GetSourceColumn, &ILogMsgData::GetTag, &ILogMsgData::IsValid})
        told << ' ' << (message.*get)();
    told << ' ' << message.GetIndent(65535) << ' ' << message.GetIndent(80000) << ' ' << message.GetLevel();
    return told.str();
}
