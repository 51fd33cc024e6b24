// logtool in memory: a session of logs, a host that keeps what is printed, and a way to run commands.
#pragma once

#include "host/logtool/Commands.h"
#include "tests/support/MemorySession.h"

#include "gtest/gtest.h"

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>

class MemoryInput : public logtool::Input
{
public:
    // Each piece is what one read answers; a null text fails.
    explicit MemoryInput(std::vector<std::string> pieces) : m_pieces(std::move(pieces)) {}

    Result Read(char* data, std::size_t size, std::size_t& length) override
    {
        if (m_next == m_pieces.size())
            return Result::kEnd;
        std::string& piece = m_pieces[m_next];
        if (piece == "fail")
            return Result::kError;
        length = std::min(size, piece.size());
        piece.copy(data, length);
        piece.erase(0, length);
        m_next += piece.empty() ? 1 : 0;
        return Result::kData;
    }

private:
    std::vector<std::string> m_pieces;
    std::size_t m_next = 0;
};

class MemoryHost : public logtool::Host
{
public:
    explicit MemoryHost(const MemorySession& session) : m_session(session) {}

    std::ostream& Output() override { return output; }
    std::ostream& Messages() override { return messages; }
    bool IsOutputTerminal() override { return terminal; }
    bool HasColours() override { return colours; }
    bool IsMessagesTerminal() override { return false; }
    void UseFolder(const std::string& name) override { folder = name; }
    bool FolderExists() override { return folder != "missing"; }

    std::vector<std::string> ListLogs() override
    {
        std::vector<std::string> logs;
        for (const std::string& path : m_session.files.Paths())
        {
            const std::string name = path.substr(m_session.manager.folder.size());
            if (name.ends_with(".ROW"))
                logs.push_back(name.substr(0, name.size() - 4));
        }
        return logs;
    }

    std::unique_ptr<logtool::Input> OpenInput(const std::string& path) override
    {
        const auto pieces = inputs.find(path);
        return pieces == inputs.end() ? nullptr : std::make_unique<MemoryInput>(pieces->second);
    }

    bool Wait() override { return wait && wait(); }

    std::ostringstream output;
    std::ostringstream messages;
    std::string folder;
    bool terminal = false;
    bool colours = true;
    std::map<std::string, std::vector<std::string>> inputs;
    std::function<bool()> wait;

private:
    const MemorySession& m_session;
};

class LogtoolTest : public testing::Test
{
protected:
    // Runs the words and answers what was printed; exit code and messages stay in `exitCode` and `host`.
    std::string Run(const std::vector<std::string>& words)
    {
        host.output.str("");
        host.messages.str("");
        exitCode = logtool::Run(words, host);
        return host.output.str();
    }

    // A writer of the session, closed after each use as another process would be.
    CQmLogWriter& Log(const std::string& name)
    {
        CQmLogWriter& log = m_logs[name];
        if (*log.GetFilePath() == '\0')
            log.SetFilePath(name.c_str());
        return log;
    }

    void Write(const std::string& name, const std::string& text)
    {
        Log(name).Write(text.c_str());
        Close();
    }

    void Block(const std::string& name, QmLogBlockKind kind, const std::string& caption)
    {
        Log(name).BlockBegin(kind);
        Write(name, caption);
    }

    void EndBlock(const std::string& name)
    {
        Log(name).BlockEnd();
        Close();
    }

    // What the start of a session does.
    void DeleteAll()
    {
        Close();
        EXPECT_EQ(0u, session.files.OpenHandles());
        for (const std::string& path : session.files.Paths())
            session.files.Delete(path.c_str());
        m_logs.clear();
    }

    void Close()
    {
        for (auto& [name, log] : m_logs)
            log.Close();
        QmLogWriterCloseAll();
    }

    MemorySession session;
    MemoryHost host{session};
    int exitCode = -1;

private:
    std::map<std::string, CQmLogWriter> m_logs;
};
