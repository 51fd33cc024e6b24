// Where an export goes: the standard output, a file that can be gone on with, or a receiver on the network.
#pragma once

#include "logtool/Host.h"

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace logtool
{

// The receiver is not there, or has gone before it has taken all. Trying again may help.
class ConnectionLost : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Failures are thrown: UsageError, of a stream its own, of a connection ConnectionLost.
class ExportOutput
{
public:
    virtual ~ExportOutput() = default;
    virtual void Write(std::string_view bytes) = 0;

    // Returns when all that was written is safe: in the file, or read by the receiver.
    virtual void Commit() = 0;

    // Bytes that are safe.
    virtual std::uint64_t Length() const { return 0; }
};

std::unique_ptr<ExportOutput> MakeStreamOutput(std::ostream& stream);

// Begins the file anew, or with a `length` goes on after so many of its bytes: what is more is taken away,
// for it was written by an export that was killed.
std::unique_ptr<ExportOutput> MakeFileOutput(const std::string& path, std::uint64_t length);

// `address` is "host:port". A connection is made for what is written between two commits, and ended by it: a
// receiver that ends its side then has read everything.
std::unique_ptr<ExportOutput> MakeNetworkOutput(const std::string& address, Host& host);

} // namespace logtool
