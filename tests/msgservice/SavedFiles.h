// Saved files in a folder of their own, and messages as texts that can be compared.
#pragma once

#include "msgservice/saved/MessageFileWriter.h"
#include "msgservice/saved/SavedSource.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

namespace msgservice
{

constexpr std::array kDumpedTexts = {
    &MessageFields::body,        &MessageFields::timestamp,      &MessageFields::levelText,
    &MessageFields::topic,       &MessageFields::source,         &MessageFields::who,
    &MessageFields::module,      &MessageFields::text1,          &MessageFields::text2,
    &MessageFields::runtimeFile, &MessageFields::runtimeContext,
};
constexpr std::array kDumpedNumbers = {&MessageFields::errorNumber, &MessageFields::line,
                                       &MessageFields::sourceLine, &MessageFields::sourceColumn};

struct CollectingSink : MessageSink
{
    void Add(const MessageFields& message) override
    {
        std::ostringstream dump;
        for (const auto field : kDumpedTexts)
            dump << message.*field << '|';
        for (const auto field : kDumpedNumbers)
            dump << message.*field << ' ';
        dump << message.time << ' ' << message.level << ' ' << message.indent << ' '
             << message.countsSourceLine;
        dumps.push_back(dump.str());
    }

    std::vector<std::string> dumps;
};

class SavedFilesTest : public testing::Test
{
protected:
    using Mode = MessageFileWriter::Mode;

    SavedFilesTest()
    {
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        m_folder = std::filesystem::temp_directory_path() / ("saved-" + std::to_string(now));
        std::filesystem::create_directory(m_folder);
        m_path = (m_folder / "x.zemalog").string();
    }
    ~SavedFilesTest() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    static void Add(MessageFileWriter& writer, const std::vector<std::string>& bodies)
    {
        MessageFields fields;
        for (const std::string& body : bodies)
        {
            fields.body = body;
            writer.Add(fields);
        }
    }

    void Save(const std::vector<std::string>& bodies, Mode mode = Mode::Replace) const
    {
        MessageFileWriter writer(m_path, mode, {});
        Add(writer, bodies);
        writer.Commit();
    }

    // Why it cannot be done; empty if it was.
    static std::string Refused(const std::function<void()>& act)
    {
        try
        {
            act();
            return "";
        }
        catch (const MessageFileError& error)
        {
            return error.what();
        }
    }

    // What opening the file and reading all of it says: notices, or why it cannot be read.
    std::string Told(CollectingSink& sink) const
    {
        std::string notices;
        const std::string refused = Refused([&] {
            SavedSource source(m_path, SavedSource::AtEnd::Stop);
            while (source.Read(sink) == MessageSource::State::More)
                continue;
            notices = source.TakeNotices();
        });
        return refused + notices;
    }

    // What is told, if anything is, and the bodies of all messages: "a|b|".
    std::string Bodies() const
    {
        CollectingSink sink;
        std::string text = Told(sink);
        for (const std::string& message : sink.dumps)
            text += message.substr(0, message.find('|') + 1);
        return text;
    }

    auto FileCount() const { return std::distance(std::filesystem::directory_iterator(m_folder), {}); }

    std::filesystem::path m_folder;
    std::string m_path;
};

} // namespace msgservice
