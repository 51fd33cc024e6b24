// The command framework's interfaces: entries, the collectors that visit them, and the handlers that offer
// them.
#pragma once

#include "zemacore/ZemaApi.h"

#include <memory>

class IQmHandler;

// What is held with a key: the accelerator flags of the system.
constexpr unsigned kQmShift = 4;
constexpr unsigned kQmControl = 8;
constexpr unsigned kQmAlt = 16;

// One command: what a menu shows of it, its shortcut, and its action. An entry lives as long as the collector
// that took it, often only for one call; it points at what it acts on and does not own it.
class QMPLATFORM_API IQmEntry
{
public:
    virtual void Execute() = 0;

    // The menu text, with "&" before its access key; null hides the entry and switches its shortcut off.
    virtual const char* GetCaption();

    // The shortcut: a virtual key code, 0 for none, and what is held with it (kQmShift and its like), nothing
    // else.
    virtual unsigned GetKey();
    virtual unsigned GetModifiers();

    virtual bool IsEnabled();
    virtual bool IsChecked(); // false by default

    // The name of the picture beside the caption; null for none.
    virtual const char* GetImage();

    virtual ~IQmEntry();
};

// A collector: what IQmHandler::Scan fills, entry by entry, in menu order.
class QMPLATFORM_API IQmCommand
{
public:
    virtual void Add(std::unique_ptr<IQmEntry> entry) = 0;
    virtual void AddSeparator();
    virtual ~IQmCommand();
};

// A collector that looks for one command and carries an answer; IQmHandler::Dispatch sends it round.
class QMPLATFORM_API CQmCommandRecord : public IQmCommand
{
public:
    // `handler` is about to be scanned.
    virtual void Visit(IQmHandler& handler);

    // The scan has ended: the time to carry out what was found, for nobody looks at the handler any more.
    virtual void Finish();

    // Non-zero when the command was found and dealt with.
    int GetResult() const { return m_result; }
    void SetResult(int result) { m_result = result; }

private:
    int m_result = 0;
};

// What offers commands: every window of the library, and whatever a host routes commands to.
class QMPLATFORM_API IQmHandler
{
public:
    // Offers this object's commands to `collector`, in menu order; none by default.
    virtual void Scan(IQmCommand& collector);

    // Clears the record's result, lets it visit this handler, scans with it, lets it finish and answers its
    // result. The command may destroy this object: it is not touched once the record finishes.
    virtual int Dispatch(CQmCommandRecord& record);

    // While off, keys are the window's own: no shortcut is looked up. On at construction.
    virtual void SetShortcuts(bool on);
    bool GetShortcuts() const { return m_shortcuts; }

    virtual ~IQmHandler();

private:
    bool m_shortcuts = true;
};
