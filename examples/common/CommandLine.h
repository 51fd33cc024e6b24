// Command lines, and what the examples tell their user.
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <string>

// The words after a program's name: declared one by one, then read. What is declared must outlive the
// reading, and keeps its value where the user names none.
class CommandLine
{
public:
    CommandLine(const char* name, const char* about);
    ~CommandLine();

    // Words that belong to no option, in the order in which they are declared.
    enum class Need
    {
        Required,
        Optional
    };
    void AddOperand(const char* label, std::string& value, Need need, const char* help);

    // `names` is "--desc" or several with commas between them, `label` what stands for the value in the help.
    void AddFlag(const char* names, bool& value, const char* help);
    void AddText(const char* names, const char* label, std::string& value, const char* help);
    // `take` may throw std::invalid_argument.
    void AddValue(const char* names, const char* label, std::function<void(const std::string&)> take,
                  const char* help);

    // False when help was asked for, and told. Throws std::invalid_argument with one line when the words do
    // not fit.
    bool Read(int count, char** words);

    // Tells why the program fails, in one line; its exit code.
    int Fail(const std::exception& error) const;

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};
