// A program that writes logs as its input tells it, a command a line, each answered by a line on its output.
// Ends with its input.
//
//     write LOG TEXT       "true" or "false"; a '|' in TEXT stands for a line feed
//     block LOG            BlockBegin
//     end LOG              BlockEnd
//     close                QmLogWriterCloseAll
//     turns LOG N TEXT     N times a line with TEXT and the turn, tried until it is written, and
//     QmLogWriterCloseAll texts LOG N          writes the texts of the first N mixed steps to LOG mixed SEED
//     takes mixed steps until it is killed; answers the index of each that was done output NAME LENGTH writes
//     so many characters to an output file

#include "QmLogOutputFile.h"
#include "QmLogWriter.h"
#include "tests/support/MixedSteps.h"

#include <algorithm>
#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <sstream>

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

bool Run(std::istringstream line)
{
    std::string command;
    std::string name;
    std::string text;
    line >> command >> name >> std::ws;
    std::getline(line, text);

    if (command == "close")
        return QmLogWriterCloseAll();
    if (command == "mixed")
    {
        const auto seed = static_cast<unsigned>(std::stoul(name));
        for (unsigned index = 0; Take(MixedStep(seed, index)); ++index)
            std::cout << index << std::endl;
        return false;
    }
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
    return log.Write(text.c_str());
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
