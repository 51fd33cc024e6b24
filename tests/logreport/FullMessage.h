// A message with a text in every field.
#pragma once

#include "LogMsg.h"

struct FullMessage : CCacheMsgData
{
    explicit FullMessage(const ZEMA::String& body = "A\r\nB", const ZEMA::String& topic = "topic")
    {
        m_timestamp = "time";
        m_level = 3;
        m_levelText = "Warning";
        m_body = body;
        m_source = "source";
        m_topic = topic;
        m_text1 = "no field";
        m_text2 = "no field";
        m_who = "who";
        m_errorNumber = -4;
        m_line = 6;
        m_sourceLine = 8;
        m_sourceColumn = 12;
        m_module = "module";
        m_runtimeFile = "file";
        m_runtimeContext = "context";
    }
    using CCacheMsgData::m_body;
    using CCacheMsgData::m_level;
    using CCacheMsgData::m_topic;
};
