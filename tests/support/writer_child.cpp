// A program that writes logs as its input tells it, a command a line, each answered by a line on its output.
// Ends with its input.
//
//     write LOG TEXT       "true" or "false"; a '|' in TEXT stands for a line feed
//     block LOG            BlockBegin
//     end LOG              BlockEnd
//     close                QmLogWriterCloseAll
//     line LOG TEXT        WriteLine
//     turns LOG N TEXT     N times a line with TEXT and the turn, tried until it is written, and
//                          QmLogWriterCloseAll
//     texts LOG N          writes the texts of the first N mixed steps to LOG
//     share SEED           takes mixed steps until it is killed, in turns with others; answers the index of
//                          each that was done
//     count                asks for the counter until it is killed
//     output NAME LENGTH   writes so many characters to an output file

#include "QmLogOutputFile.h"
#include "QmLogWriter.h"
#include "tests/support/MixedSteps.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <sstream>
#include <thread>

namespace
{

bool Take(const MixedStep& step)
{
    CQmLogWriter& log = QmLogWriterDefine(step.log.c_str());
    if (step.kind == MixedStep::Kind::BlockBegin)
        return log.BlockBegin(kDetailKind);
    if (step.kind == MixedStep::Kind::Text)
        return log.Write(step.text.c_str());
    log.BlockEnd(); // refused when none is open
    return true;
}

// Others write the same logs: a step is taken again until the log is free, and now and then theirs is free.
[[noreturn]] void Share(unsigned seed)
{
    constexpr std::chrono::milliseconds kTurn(2);
    for (unsigned index = 0;; ++index)
    {
        while (!Take(MixedStep(seed, index)))
        {
            QmLogWriterCloseAll();
            std::this_thread::sleep_for(kTurn);
        }
        std::cout << index << std::endl;
        if (index % 8 == 7)
        {
            QmLogWriterCloseAll();
            std::this_thread::sleep_for(kTurn);
        }
    }
}

bool Run(std::istringstream line)
{
    std::string command;
    std::string name;
    std::string text;
    line >> command >> name >> std::ws;
    std::getline(line, text);

    if (command == "close")
        return QmLogWriterCloseAll();
    if (command == "share")
        Share(static_cast<unsigned>(std::stoul(name)));
    while (command == "count")
        QmLogGlobalTimeGet();
    if (command == "output")
    {
        QmLogOutputFile file(name.c_str());
        file.Write("%s", std::string(std::stoul(text), 'x').c_str());
        return true;
    }

    CQmLogWriter& log = QmLogWriterDefine(name.c_str());
    if (command == "turns")
    {
        std::istringstream words(text);
        unsigned turns = 0;
        for (words >> turns >> text; turns > 0; --turns)
        {
            while (!log.WriteLineFormat("%s %u", text.c_str(), turns))
                log.Close(); // another process has its turn
            QmLogWriterCloseAll();
        }
        return log.GetLostRowCount() == 0;
    }
    if (command == "block")
        return log.BlockBegin(kNoticeKind);
    if (command == "end")
        return log.BlockEnd();
    if (command == "texts")
    {
        unsigned index = 0;
        while (index < std::stoul(text) && log.Write(MixedStep(1, index).text.c_str()))
            ++index;
        return index == std::stoul(text);
    }
    std::replace(text.begin(), text.end(), '|', '\n');
    return command == "line" ? log.WriteLine(text.c_str()) : log.Write(text.c_str());
}

} // namespace

int main()
{
    _setmode(_fileno(stdout), _O_BINARY); // lines end as the reader expects them
    std::string line;
    while (std::getline(std::cin, line))
        std::cout << (Run(std::istringstream(line)) ? "true" : "false") << std::endl;
    return 0;
}
