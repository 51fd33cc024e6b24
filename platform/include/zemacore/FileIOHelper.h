// Output of texts, and files that appear whole or not at all.
#pragma once

#include "zemacore/ZemaApi.h"

#include <cstddef>
#include <memory>
#include <string>

namespace ZEMA
{

// What takes the bytes of a writer.
class QMPLATFORM_API IOutput
{
public:
    virtual ~IOutput();

    // Answers false if the bytes could not be taken; all later ones are refused as well.
    virtual bool Write(const char* bytes, std::size_t length) = 0;
};

// Output into a string that the caller owns.
class QMPLATFORM_API StringOutput : public IOutput
{
public:
    explicit StringOutput(std::string& text) : m_text(text) {}
    bool Write(const char* bytes, std::size_t length) override;

private:
    std::string& m_text;
};

// Writes a file beside its place and puts it there in the end, in place of the one that is there: a full
// disk, a cancelled export or the end of the process leaves that one whole. Bytes go out in pieces of 64 KiB.
class QMPLATFORM_API FileOutput : public IOutput
{
public:
    explicit FileOutput(std::string path);
    ~FileOutput() override; // what was not committed is removed
    FileOutput(const FileOutput&) = delete;
    FileOutput& operator=(const FileOutput&) = delete;

    // Makes the file beside the place; false if that is not possible.
    bool Open();
    bool Write(const char* bytes, std::size_t length) override;

    // Closes the file and puts it into its place; false if something could not be written or the place
    // refuses it.
    bool Commit();

    const std::string& GetPath() const { return m_path; }

    // The system's words for what failed first, without a line end; empty if nothing has.
    const std::string& GetError() const { return m_error; }

private:
    bool Fail();
    bool Flush(std::size_t least);
    bool Close();

    std::string m_path;
    std::string m_beside; // empty while there is no such file
    void* m_file = nullptr;
    std::string m_buffer;
    std::string m_error;
};

struct QMPLATFORM_API FileIOHelper
{
    static std::unique_ptr<FileOutput> getWriter(const char* path);
};

} // namespace ZEMA
