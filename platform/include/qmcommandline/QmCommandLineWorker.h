// The command line of a program, taken apart into words and options.
#pragma once

#include "zemacore/ZemaApi.h"

#include <string>
#include <vector>

// An option is a word that begins with "-" or "--" and has a name after that; what follows the first "=" in
// it is its value. All other words are kept in their order, and so are those after a word "--", which is not
// kept itself. "/" begins no option: paths may begin with it. Names are compared as they are, without their
// dashes.
class QMPLATFORM_API QmCommandLineWorker
{
public:
    // No program, no words, no options.
    QmCommandLineWorker();
    ~QmCommandLineWorker();

    // Takes in the command line of this process, in UTF-8. Where there is no such thing to ask, as outside
    // Windows, it is an empty one.
    void ReadFromProcess();

    // Takes in a command line that has been split, the program first. It replaces the one before.
    void ReadFromWords(const std::vector<std::string>& words);

    // As it was called; empty if there is none.
    const std::string& GetProgram() const { return m_program; }

    // Neither program nor options.
    const std::vector<std::string>& GetWords() const { return m_words; }

    bool HasOption(const std::string& name) const;

    // Puts the option's value into `value`, empty for an option without "="; of several with this name the
    // last one counts. Without the option it answers false and leaves `value` alone.
    bool GetOption(const std::string& name, std::string& value) const;

private:
    struct Option
    {
        std::string name;
        std::string value;
    };

    const Option* FindOption(const std::string& name) const;

    std::string m_program;
    std::vector<std::string> m_words;
    std::vector<Option> m_options;
};
