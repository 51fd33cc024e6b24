// What a saved file holds: its tables, its version, and how it is told from other files. docs/file-format.md
// tells the same to whoever uses such files.
#pragma once

#include "msgservice/Message.h"
#include "msgservice/saved/Database.h"

#include <array>
#include <limits>

namespace msgservice
{

constexpr std::int64_t kApplicationId = 0x5A4D4C47; // "ZMLG"
constexpr std::int64_t kFormatVersion = 1;

// A message's number is its place in the order of arrival, from 1 on.
constexpr std::int64_t kLastNumber = std::numeric_limits<std::int64_t>::max() - 1;

// The columns as the statements below name them: the number first.
constexpr int kTimeColumn = 1;
constexpr int kLevelColumn = 2;
constexpr int kIndentColumn = 3;
constexpr int kFlagColumn = 4; // countsSourceLine
constexpr int kFirstNumber = 5;
constexpr std::array kNumberFields = {&MessageFields::errorNumber, &MessageFields::line,
                                      &MessageFields::sourceLine, &MessageFields::sourceColumn};
constexpr int kFirstText = kFirstNumber + static_cast<int>(kNumberFields.size());
inline constexpr std::array kTextFields = {
    &MessageFields::timestamp, &MessageFields::levelText,   &MessageFields::topic,
    &MessageFields::module,    &MessageFields::runtimeFile, &MessageFields::runtimeContext,
    &MessageFields::source,    &MessageFields::who,         &MessageFields::text1,
    &MessageFields::text2,     &MessageFields::body};

extern const char kInsertMessage[];
extern const char kSelectMessages[]; // from the number of the first parameter on
extern const char kSelectNumber[];   // the first number from the parameter on: reads nothing of the message

// Makes the tables in a transaction that is open.
void MakeSchema(const Database& database);

// Opens a saved file and makes sure that it is one, and one that we understand. A file whose end is missing
// is opened too, if `access` is for reading; `isDamaged` tells that.
Database OpenMessageDatabase(const std::string& path, Database::Access access, bool& isDamaged);

// The highest number that was ever given to a message of the file, as the file tells; 0 if it cannot be read.
std::int64_t LastNumberGiven(const Database& database);

// Level 0 to 5; what is no level is kInfoLevel, as for a message that tells none.
constexpr std::uint32_t ValidLevel(std::int64_t level)
{
    return level >= kTraceLevel && level <= kFatalLevel ? static_cast<std::uint32_t>(level) : kInfoLevel;
}

} // namespace msgservice
