// Messages exported to files, against writing the same bytes.
#include "MessageBench.h"

#include "logreport/model/Export.h"
#include "msgservice/MsgService.h"
#include "zemacore/FileCalls.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace bench
{

namespace
{

using ZEMA::FileCalls;

constexpr std::size_t kPiece = 64 * 1024; // bytes
constexpr char kBytes[] = "bench_messages.bytes";
constexpr std::uint32_t kStep = 200; // messages, as the viewer takes them

void Must(bool isDone)
{
    if (isDone)
        return;
    std::fprintf(stderr, "bench_messages: a file cannot be written\n");
    std::exit(2);
}

void WriteBytes(const char* path, std::uint64_t size)
{
    const std::string piece(kPiece, 'x');
    const HANDLE file = FileCalls().Create(path, GENERIC_WRITE, 0, OPEN_ALWAYS, 0);
    DWORD written = 0;
    for (std::uint64_t rest = size; rest > 0; rest -= written)
        Must(FileCalls().Write(file, piece.data(), static_cast<DWORD>(std::min<std::uint64_t>(rest, kPiece)),
                               written));
    Must(FileCalls().SetEnd(file) && FileCalls().Close(file));
}

} // namespace

void MeasureExports(const std::shared_ptr<msgservice::MessageStore>& store, unsigned rounds, Report& report)
{
    msgservice::MsgService service(store);
    service.Settle();
    const std::uint32_t count = service.GetMsgCount();
    const std::vector<std::int32_t> fields = {kLogMsgTimestamp, kLogMsgLevel, kLogMsgTopic, kLogMsgBody};
    for (const char* const form : {"txt", "csv", "xml"})
    {
        const std::string path = std::string("bench_messages.") + form;
        const auto write = [&] {
            logreport::Export work(service, path, fields, 1, count);
            Must(work.Begin());
            while (work.Step(kStep))
                ;
            Must(work.GetFailure().empty());
        };
        write();
        std::uint64_t size = 0;
        Must(FileCalls().GetSize(path.c_str(), size));
        const auto remove = [&] {
            FileCalls().Delete(path.c_str());
            FileCalls().Delete(kBytes);
        };
        const Comparison exports({{count, [&] { WriteBytes(kBytes, size); }, remove}, {count, write, remove}},
                                 rounds);
        report.Add({std::string("export a message as ") + form, exports.Time(1), "us",
                    "writing its bytes alone", exports.Ratio(1), 3.0});
        remove();
    }
}

} // namespace bench
