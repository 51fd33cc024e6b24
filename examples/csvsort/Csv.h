// Reading CSV files.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

// Ends the program with a line on standard error.
class Failure : public std::runtime_error
{
public:
    // 1: the file is no CSV file; 2: asked wrongly, or the output cannot be written.
    Failure(int code, const std::string& what, const std::string& why)
        : std::runtime_error(what + ": " + why), exitCode(code)
    {
    }

    int exitCode;
};

// The lines of a file, captions first. All have as many fields as there are captions: short ones are filled
// up with empty fields. Fields are separated by commas, semicolons or tabs, whichever the first line has most
// of; quoted ones may hold separators, line feeds and doubled quotes. Empty lines and the mark of UTF-8 do
// not count; control characters become blanks. Throws Failure.
std::vector<std::vector<std::string>> ReadCsv(const std::string& path);
