#include "host/logdesk/Arguments.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/logtool/LogtoolTest.h"

namespace fuzz
{

namespace
{

// The words of a command line, one a line. Those that name files of this system are left out.
std::vector<std::string> WordsOf(std::string_view bytes)
{
    std::vector<std::string> words;
    for (Input input(bytes); !input.IsEmpty() && words.size() < 20;)
    {
        const std::string_view rest = input.Rest();
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string word(rest.substr(0, end));
        input = Input(rest.substr(std::min(end + 1, rest.size())));
        const bool touchesFiles = word.starts_with("--s") || word.starts_with("--c") ||
                                  word.starts_with("messages") || word.starts_with("--f");
        if (!touchesFiles && word.find('\0') == std::string::npos)
            words.push_back(word);
    }
    return words;
}

} // namespace

void Arguments(std::string_view bytes)
{
    const std::vector<std::string> words = WordsOf(bytes);
    try
    {
        const logdesk::Arguments arguments = logdesk::ParseArguments(words);
        Require(arguments.keep == 0 || arguments.start, "sessions are kept only where one begins");
    }
    catch (const logdesk::UsageError& error)
    {
        Require(*error.what() != '\0', "misuse is told");
    }

    MemorySession session;
    {
        CQmLogWriter main = WriterOf("Main");
        main.BlockBegin(kErrorKind);
        main.Write("a caption\nand a line");
        main.BlockEnd();
        QmLogWriterCloseAll();
    }
    MemoryHost host;
    host.logs = {"Main"};
    host.inputs["-"] = {"one\ntwo"};
    const int code = logtool::Run(words, host);
    Require(code >= 0 && code <= 2, "an exit code is 0, 1 or 2");
    Require(code != 2 || !host.messages.str().empty(), "misuse is told");
    const std::string messages = host.messages.str();
    Require(std::none_of(messages.begin(), messages.end(), [](char byte) { return byte == '\x1b'; }),
            "a terminal obeys no message");
    QmLogReaderDefine("Main").Close();
}

} // namespace fuzz
