// The words of this process's command line.
#pragma once

#include <string>
#include <vector>

// As the system splits them, in UTF-8, the program first; none where there is no system to ask.
std::vector<std::string> ProcessWords();
