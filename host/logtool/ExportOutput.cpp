#include "logtool/ExportOutput.h"

#include "commandline/CommandLine.h"
#include "logtool/Commands.h"

#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <algorithm>
#include <ostream>

namespace logtool
{

namespace
{

class StreamOutput : public ExportOutput
{
public:
    explicit StreamOutput(std::ostream& stream) : m_stream(stream) {}
    void Write(std::string_view bytes) override
    {
        m_stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    void Commit() override { m_stream.flush(); }

private:
    std::ostream& m_stream;
};

// Written through, so that no cursor is ever ahead of its file.
class FileOutput : public ExportOutput
{
public:
    FileOutput(const std::string& path, std::uint64_t length) : m_path(path), m_length(length)
    {
        const DWORD disposition = length > 0 ? OPEN_EXISTING : OPEN_ALWAYS;
        m_file = ZEMA_CreateFile(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, disposition,
                                 FILE_FLAG_WRITE_THROUGH | FILE_ATTRIBUTE_NORMAL, nullptr);
        if (!m_file || m_file == INVALID_HANDLE_VALUE)
            throw UsageError(path, "cannot be opened for writing: " + SystemReason());
        try
        {
            CutBack();
        }
        catch (...)
        {
            m_files.Close(m_file);
            throw;
        }
    }
    ~FileOutput() override { m_files.Close(m_file); }
    FileOutput(const FileOutput&) = delete;
    FileOutput& operator=(const FileOutput&) = delete;

    // In pieces that every system takes at once.
    void Write(std::string_view bytes) override
    {
        constexpr std::size_t kWholeWrite = 16 * 1024 * 1024;
        while (!bytes.empty())
        {
            const auto size = static_cast<DWORD>(std::min(bytes.size(), kWholeWrite));
            DWORD written = 0;
            if (!m_files.Write(m_file, bytes.data(), size, written))
                Throw();
            if (written == 0)
                throw UsageError(m_path, "cannot be written: " + SystemReason(ERROR_DISK_FULL));
            m_length += written;
            bytes.remove_prefix(written);
        }
    }

    void Commit() override {}
    std::uint64_t Length() const override { return m_length; }

private:
    void CutBack()
    {
        std::uint64_t size = 0;
        std::uint64_t position = 0;
        if (!m_files.Seek(m_file, 0, FILE_END, size))
            Throw();
        if (size < m_length)
            throw UsageError(m_path, "is shorter than its cursor says: begin again, without both files");
        if (!m_files.Seek(m_file, static_cast<std::int64_t>(m_length), FILE_BEGIN, position) ||
            !m_files.SetEnd(m_file))
            Throw();
    }

    [[noreturn]] void Throw() const { throw UsageError(m_path, "cannot be written: " + SystemReason()); }

    ZEMA::IFileCalls& m_files = ZEMA::FileCalls();
    std::string m_path;
    std::uint64_t m_length;
    HANDLE m_file = nullptr;
};

class NetworkOutput : public ExportOutput
{
public:
    NetworkOutput(const std::string& address, Host& host) : m_address(address), m_host(host)
    {
        const std::size_t colon = address.rfind(':');
        if (colon == std::string::npos || colon == 0)
            throw UsageError("--to-tcp", "'" + address + "' is no host:port");
        commandline::ParseNumber("--to-tcp", address.substr(colon + 1), {1, 65535});
    }

    void Write(std::string_view bytes) override
    {
        std::string fault;
        if (!m_connection)
        {
            const std::size_t colon = m_address.rfind(':');
            m_connection = m_host.ConnectTcp(m_address.substr(0, colon), m_address.substr(colon + 1), fault);
        }
        if (!m_connection || !m_connection->Send(bytes, fault))
            Throw(fault);
    }

    void Commit() override
    {
        std::string fault;
        if (m_connection && !m_connection->Finish(fault))
            Throw(fault);
        m_connection.reset();
    }

private:
    [[noreturn]] void Throw(const std::string& fault)
    {
        m_connection.reset();
        throw ConnectionLost(m_address + ": " + fault);
    }

    std::string m_address;
    Host& m_host;
    std::unique_ptr<Connection> m_connection;
};

} // namespace

std::unique_ptr<ExportOutput> MakeStreamOutput(std::ostream& stream)
{
    return std::make_unique<StreamOutput>(stream);
}

std::unique_ptr<ExportOutput> MakeFileOutput(const std::string& path, std::uint64_t length)
{
    return std::make_unique<FileOutput>(path, length);
}

std::unique_ptr<ExportOutput> MakeNetworkOutput(const std::string& address, Host& host)
{
    return std::make_unique<NetworkOutput>(address, host);
}

} // namespace logtool
