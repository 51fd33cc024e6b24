// The items of callback mode: none is kept, and each is asked for whenever it is needed.
#pragma once

#include "report/model/Overrides.h"

#include <deque>
#include <string>
#include <vector>

namespace report
{

// An owner that is asked for an item may ask for others before it answers. Each level of such questions has a
// record and a text buffer of its own, so that nobody's answer is overwritten.
class CallbackItems
{
public:
    explicit CallbackItems(Overrides& overrides) : m_overrides(overrides) {}
    CallbackItems(const CallbackItems&) = delete;
    CallbackItems& operator=(const CallbackItems&) = delete;

    // A record with `fields` undefined cells after LoadItemData has filled it; null if it could not. Valid
    // until an item is fetched again at this level.
    Item* Fetch(int item, int subitem, unsigned mask, int fields);

    // Asks the owner and puts the answer into `record`: what LoadItemData does. The owner gets a text buffer
    // of 65,537 bytes, of which none but those far after an earlier answer may be other than NUL.
    bool Load(Item& record, int item, int subitem, unsigned mask);

private:
    struct Level
    {
        Item item;
        std::vector<char> text;
    };
    class Entered;

    Level& Current();
    const ZEMA::String& UndefinedCells(int fields);

    Overrides& m_overrides;
    std::deque<Level> m_levels; // addresses stay good while it grows
    std::size_t m_depth = 0;    // of questions that wait for an answer
    ZEMA::String m_undefined;   // cells: so many,
    int m_fields = -1;
    std::string m_field; // of this one
};

} // namespace report
