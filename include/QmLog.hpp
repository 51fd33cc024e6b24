// The log files for C++14 and any compiler: the functions of QmLogC.h as classes. Needs no other header of
// ours.
//
//     qmlog::Writer log("Main");
//     log.Line("Started");
//     {
//         qmlog::Block block(log, QMLOG_C_NOTICE, "Load job list");
//         log.Format("%d jobs", 12);
//     }
//     qmlog::Writer::CloseAll();
//
// Operations answer false if they fail, and LastErrorText tells why; nothing throws but for want of memory.
// Texts are std::string or end with their NUL; a null text is empty. Threads: see QmLogC.h.
#pragma once

#include "QmLogC.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

#if defined(__clang__)
#define QMLOG_HPP_PRINTF(format_, first) __attribute__((format(printf, format_, first)))
#elif defined(__GNUC__)
#define QMLOG_HPP_PRINTF(format_, first) __attribute__((format(gnu_printf, format_, first)))
#else
#define QMLOG_HPP_PRINTF(format_, first)
#endif

namespace qmlog
{

// An address and a number of bytes, of the argument that it was made of.
class Text
{
public:
    Text(const char* text) : m_data(text), m_size(text ? std::strlen(text) : 0) {}
    Text(const char* text, std::size_t size) : m_data(text), m_size(size) {}
    Text(const std::string& text) : m_data(text.data()), m_size(text.size()) {}

    const char* Data() const { return m_data; }
    std::size_t Size() const { return m_size; }

private:
    const char* m_data;
    std::size_t m_size;
};

// What failed last in this thread.
inline int LastError()
{
    return QmLogCLastError();
}

inline const char* LastErrorText()
{
    return QmLogCLastErrorText();
}

// Turns the clock of this process on or off: see QmLogCSetTimes.
inline void SetTimes(bool on)
{
    QmLogCSetTimes(on ? 1 : 0);
}

// The writer of a name. All objects of one name are the same writer, and copies cost nothing.
class Writer
{
public:
    // False in a condition if the name is refused; then nothing can be written.
    explicit Writer(Text name) : m_writer(QmLogCWriterDefine(name.Data(), name.Size())) {}
    explicit operator bool() const { return m_writer; }

    bool Write(Text text) { return QmLogCWrite(m_writer, text.Data(), text.Size()) != 0; }
    bool Line(Text text) { return QmLogCWriteLine(m_writer, text.Data(), text.Size()) != 0; }

    // A line formatted as printf does, of any length.
    bool Format(const char* format, ...) QMLOG_HPP_PRINTF(2, 3)
    {
        std::va_list arguments;
        va_start(arguments, format);
        const bool done = FormatLine(format, arguments);
        va_end(arguments);
        return done;
    }

    const char* Name() const { return QmLogCWriterName(m_writer); }
    unsigned LostRows() const { return QmLogCWriterLostRows(m_writer); }
    bool Clear() { return QmLogCWriterClear(m_writer) != 0; }
    bool Close() { return QmLogCWriterClose(m_writer) != 0; }
    static bool CloseAll() { return QmLogCWriterCloseAll() != 0; }

    QmLogCWriter* Handle() const { return m_writer; }

private:
    bool FormatLine(const char* format, std::va_list arguments)
    {
        char few[512];
        std::va_list again;
        va_copy(again, arguments);
        const int length = std::vsnprintf(few, sizeof(few), format, arguments);
        bool done = false;
        if (length >= 0 && static_cast<std::size_t>(length) < sizeof(few))
        {
            done = Line({few, static_cast<std::size_t>(length)});
        }
        else if (length >= 0)
        {
            std::string many(static_cast<std::size_t>(length) + 1, '\0');
            std::vsnprintf(&many[0], many.size(), format, again);
            done = Line({many.data(), many.size() - 1});
        }
        va_end(again);
        return done;
    }

    QmLogCWriter* m_writer;
};

// A block for the length of a scope: opened here, closed on every way out of it.
class Block
{
public:
    Block(const Writer& log, unsigned kind, Text header)
        : m_log(log), m_open(QmLogCBlockBegin(log.Handle(), kind, header.Data(), header.Size()) != 0)
    {
    }

    ~Block()
    {
        if (m_open)
            QmLogCBlockEnd(m_log.Handle());
    }

    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

private:
    Writer m_log;
    bool m_open; // false when the block was refused: then there is none to close
};

// The lines of a log. Moved, not copied.
class Reader
{
public:
    // False in a condition if the name is refused; then there are no rows.
    explicit Reader(Text name) : m_reader(QmLogCReaderOpen(name.Data(), name.Size())) {}

    // A log by the path of its text file.
    static Reader AtPath(Text path) { return Reader(QmLogCReaderOpenPath(path.Data(), path.Size())); }

    Reader(Reader&& other) noexcept : m_reader(std::exchange(other.m_reader, nullptr)) {}
    Reader& operator=(Reader&& other) noexcept
    {
        std::swap(m_reader, other.m_reader);
        return *this;
    }
    ~Reader()
    {
        if (m_reader)
            QmLogCReaderClose(m_reader);
    }

    explicit operator bool() const { return m_reader; }

    // Rows at this moment.
    unsigned Count() const { return QmLogCReaderCount(m_reader); }

    // Line `index`, counted from 0, with its line feed. What `text` has room for is used.
    bool Read(unsigned index, std::string& text, QmLogCRow& row) const
    {
        std::size_t length = 0;
        for (text.resize(text.capacity());; text.resize(length)) // a line may have grown since
        {
            if (QmLogCReaderRead(m_reader, index, &text[0], text.size(), &length, &row) != 0)
            {
                text.resize(length);
                return true;
            }
            if (QmLogCLastError() != QMLOG_C_TOO_SMALL)
            {
                text.clear();
                return false;
            }
        }
    }

    // The row with a sequence number, or the next one (`forward`) or the one before.
    bool Find(unsigned number, bool forward, unsigned& index) const
    {
        return QmLogCReaderFind(m_reader, number, forward ? 1 : 0, &index) != 0;
    }

private:
    explicit Reader(QmLogCReader* reader) : m_reader(reader) {}

    QmLogCReader* m_reader;
};

} // namespace qmlog

#undef QMLOG_HPP_PRINTF
