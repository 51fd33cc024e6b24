// logtool in memory: a session of logs, a host that keeps what is printed, and a way to run commands.
#pragma once

#include "host/logtool/Commands.h"
#include "tests/support/MemorySession.h"
#include "gtest/gtest.h"

#include <deque>
#include <functional>
#include <iomanip>
#include <map>
#include <set>
#include <sstream>

// Answers one piece after the other, as a live input does, and takes it away; the piece "fail" fails.
class MemoryInput : public logtool::Input
{
public:
    MemoryInput(std::deque<std::string>& pieces, const std::function<void()>& onRead)
        : m_pieces(pieces), m_onRead(onRead)
    {
    }

    Result Read(char* data, std::size_t size, std::size_t& length) override
    {
        m_onRead();
        if (m_pieces.empty())
            return Result::End;
        if (m_pieces.front() == "fail")
        {
            ZEMA::FileCalls().SetLastError(23);
            return Result::Error;
        }
        length = m_pieces.front().copy(data, size);
        m_pieces.front().erase(0, length);
        if (m_pieces.front().empty())
            m_pieces.pop_front();
        return Result::Data;
    }

private:
    std::deque<std::string>& m_pieces;
    const std::function<void()>& m_onRead;
};

class MemoryHost : public logtool::Host
{
public:
    std::ostream& Output() override { return output; }
    std::ostream& Messages() override { return messages; }
    bool IsOutputTerminal() override { return terminal; }
    bool HasColours() override { return colours; }
    bool IsMessagesTerminal() override { return false; }
    void UseFolder(const std::string& name) override { folder = name; }
    std::string OutputFault() override { return outputFault; }
    std::string FolderName() override { return folder; }
    bool FolderExists() override
    {
        ZEMA::FileCalls().SetLastError(3);
        return folder != "missing";
    }
    std::vector<std::string> ListLogs() override { return {logs.begin(), logs.end()}; }
    std::string UserFormats() override { return formats; }
    bool IsEndWanted() override { return endWanted; }
    bool Wait() override { return wait(); }

    std::unique_ptr<logtool::Input> OpenInput(const std::string& path) override
    {
        ZEMA::FileCalls().SetLastError(2);
        if (!inputs.contains(path))
            return nullptr;
        return std::make_unique<MemoryInput>(inputs[path], onRead);
    }

    std::unique_ptr<logtool::Connection> ConnectTcp(const std::string&, const std::string&,
                                                    std::string& fault) override
    {
        fault = "refused";
        return connect ? connect() : nullptr;
    }

    std::function<std::unique_ptr<logtool::Connection>()> connect;
    std::ostringstream output;
    std::ostringstream messages;
    std::string folder;
    std::set<std::string> logs;
    std::ios::iostate outputState = std::ios::goodbit;
    std::string outputFault = "Error 112.";
    std::string formats;
    bool terminal = false;
    bool colours = true;
    bool endWanted = false;
    std::map<std::string, std::deque<std::string>> inputs;
    std::function<void()> onRead = [] {};
    std::function<bool()> wait = [] { return false; };
};

template <typename TestHost> class LogtoolTestOn : public testing::Test
{
protected:
    // Runs a command and answers what a user sees: output, messages, and "exit 1" unless the code is 0.
    std::string Run(const std::string& command)
    {
        host.output = std::ostringstream();
        host.output.setstate(host.outputState);
        host.messages.str("");
        const int exitCode = logtool::Run(Words(command), host);
        return host.output.str() + host.messages.str() +
               (exitCode == 0 ? "" : "exit " + std::to_string(exitCode));
    }

    // Writes in steps, as another process: "Run:text", "Run=line" with WriteLine, "Run+caption" to begin a
    // plain block, "Run!caption" an error, "Run?caption" a notice, "Run-" to end the block.
    void Play(const std::string& script)
    {
        const std::map<char, QmLogBlockKind> kind = {
            {'+', kPlainKind}, {'!', kErrorKind}, {'?', kNoticeKind}};
        for (const std::string& step : Words(script))
        {
            const std::size_t mark = step.find_first_of(":=+!?-");
            const std::string name = step.substr(0, mark);
            host.logs.insert(name);
            CQmLogWriter& log = m_logs[name];
            log.SetFilePath(name.c_str());
            if (kind.contains(step[mark]))
                log.BlockBegin(kind.at(step[mark]));
            if (step[mark] == '-')
                log.BlockEnd();
            else if (step[mark] == '=')
                log.WriteLine(step.substr(mark + 1).c_str());
            else
                log.Write(step.substr(mark + 1).c_str());
        }
        for (auto& [name, log] : m_logs)
            log.Close();
        QmLogWriterCloseAll();
    }

    // A new session begins with none of the old one's files.
    void PlayNew(const std::string& script)
    {
        QmLogWriterCloseAll();
        m_logs.clear();
        host.logs.clear();
        for (const std::string& path : session.files.Paths())
            session.files.Delete(path.c_str());
        Play(script);
    }

    MemorySession session;
    TestHost host;

private:
    // Words with blanks in them, and empty ones, stand in single quotes.
    static std::vector<std::string> Words(const std::string& text)
    {
        std::vector<std::string> words;
        std::istringstream stream(text);
        for (std::string word; stream >> std::quoted(word, '\'');)
            words.push_back(word);
        return words;
    }

    std::map<std::string, CQmLogWriter> m_logs;
};

using LogtoolTest = LogtoolTestOn<MemoryHost>;
