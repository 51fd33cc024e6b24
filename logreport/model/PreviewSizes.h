// The measured sizes of previews.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace logreport
{

struct PreviewSize
{
    int right = 0; // from the left edge of the row, in pixels, like the next
    int height = 0;
};

// Remembers the sizes of some thousand messages that were measured last, by their ids: as many as any window
// shows at once, in constant memory.
class PreviewSizes
{
public:
    std::optional<PreviewSize> Find(std::uint32_t id) const;
    void Keep(std::uint32_t id, PreviewSize size);

    // For another view, font or resolution.
    void Forget() { m_entries.clear(); }

private:
    static constexpr std::size_t kEntries = 4096; // a message's is at its id modulo this

    struct Entry
    {
        std::uint32_t id = 0;
        PreviewSize size;
        bool isKept = false;
    };

    std::vector<Entry> m_entries; // empty or all
};

// The width that a preview may have: from `left`, its indentation, to the right edge of the rows. Previews
// that are shown alone may be wider: one can scroll to their end.
constexpr int kWidestPreview = 65535;
constexpr int kIndentStep = 16; // pixels a level at 96 dots per inch
constexpr std::uint32_t kMaxIndent = 65535;

} // namespace logreport
