// The records that pass between the report control and its owner. No window system.
#pragma once

#include "zemacore/String.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// Which fields of a cell or an item are valid (_RVITEM::mask).
constexpr std::uint32_t RVIM_TEXT = 0x0001;
constexpr std::uint32_t RVIM_TEXTCOLOR = 0x0002;
constexpr std::uint32_t RVIM_IMAGE = 0x0004;
constexpr std::uint32_t RVIM_CHECK = 0x0008;
constexpr std::uint32_t RVIM_BACKGROUNDCOLOR = 0x0010;
constexpr std::uint32_t RVIM_PREVIEWHEIGHT = 0x0020;
constexpr std::uint32_t RVIM_STATE = 0x0040;
constexpr std::uint32_t RVIM_ITEMDATA = 0x0080;
constexpr std::uint32_t RVIM_TREELEVEL = 0x0100;
constexpr std::uint32_t RVIM_EXTRA = 0x0200;

// An item's state.
constexpr std::uint32_t RVIS_FOCUSED = 0x01;
constexpr std::uint32_t RVIS_SELECTED = 0x02; // comes from the selected rows and is never stored
constexpr std::uint32_t RVIS_BOLD = 0x04;
constexpr std::uint32_t RVIS_READONLY = 0x08;   // its cells are not edited
constexpr std::uint32_t RVIS_OWNERDRAWN = 0x10; // RVN_ITEMDRAW is sent for its cells
constexpr std::uint32_t RVIS_COLLAPSED = 0x20;  // has children that are not shown
constexpr std::uint32_t RVIS_EXPANDED = 0x40;   // has children that are shown

// Item numbers with a meaning of their own.
constexpr int RVI_DEFAULT = -1; // the default item, shown as the fixed row
constexpr int RVI_NONE = -2;    // no item, and no row

// One cell and its item, read or to be changed. A subitem of -1 addresses the item's preview.
struct _RVITEM
{
    std::uint32_t mask = 0;
    std::int32_t item = 0;
    std::int32_t subitem = 0;
    char* text = nullptr;
    std::int32_t textMax = 0;          // size of `text` in bytes
    std::int32_t textColor = -1;       // index of the colour table; -1 none
    std::int32_t image = -1;           // index of the item image list; -1 none
    std::int32_t check = -1;           // check state; -1 no check box
    std::int32_t backgroundColor = -1; // index of the colour table; -1 none
    std::int32_t previewHeight = 0;    // pixels; 0 none
    std::int32_t treeLevel = -1;       // -1 none
    std::uint32_t state = 0;
    std::int64_t itemData = 0; // the owner's
    std::int32_t extra = -1;   // the owner's, one for each cell
};
static_assert(sizeof(void*) != 8 || (sizeof(_RVITEM) == 72 && offsetof(_RVITEM, text) == 16 &&
                                     offsetof(_RVITEM, state) == 52 && offsetof(_RVITEM, extra) == 64));

// A subitem's format. Bits 0 and 1 are the alignment: 0 left, 1 right, 2 centred.
constexpr std::uint32_t RVSF_ALIGNMASK = 0x00000003;
constexpr std::uint32_t RVSF_IMAGE = 0x00000800;       // the header shows `image`
constexpr std::uint32_t RVSF_FIXEDWIDTH = 0x00040000;  // not fitted by a double click on its divider
constexpr std::uint32_t RVSF_IMAGEPLACE = 0x01000000;  // cells keep room for an image
constexpr std::uint32_t RVSF_CHECKPLACE = 0x02000000;  // cells keep room for a check box
constexpr std::uint32_t RVSF_NOCELLFOCUS = 0x04000000; // cells cannot hold the focus

// What defines a subitem.
struct _RVSUBITEM
{
    std::uint32_t format = 0;
    std::int32_t width = -1;  // pixels; negative: the default column width
    std::int32_t header1 = 0; // both are the owner's; the header keeps them, too
    std::int32_t header2 = 0;
    std::int32_t image = 0; // read only with RVSF_IMAGE
    const char* text = nullptr;
};
static_assert(sizeof(void*) != 8 || (sizeof(_RVSUBITEM) == 32 && offsetof(_RVSUBITEM, text) == 24));

// What FindItem looks for: an item must meet each criterion in `flags`.
constexpr std::uint32_t RVFI_TEXT = 0x0001;
constexpr std::uint32_t RVFI_PREFIX =
    0x0002; // with RVFI_TEXT: it is enough that the cell's text begins with `text`
constexpr std::uint32_t RVFI_IMAGE = 0x0004;
constexpr std::uint32_t RVFI_CHECK = 0x0008;
constexpr std::uint32_t RVFI_ITEMDATA = 0x0010;
constexpr std::uint32_t RVFI_WRAP = 0x0100;
constexpr std::uint32_t RVFI_BACKWARD = 0x0200;

struct _RVFINDINFO
{
    std::uint32_t flags = 0;
    const char* text = nullptr;
    std::int32_t image = -1;
    std::int32_t check = -1;
    std::int64_t itemData = 0;
};
static_assert(sizeof(void*) != 8 || (sizeof(_RVFINDINFO) == 32 && offsetof(_RVFINDINFO, itemData) == 24));

// Where a point is (_RVHITTESTINFO::flags). The last four can be combined.
constexpr std::uint32_t RVHT_NOWHERE = 0x0001;
constexpr std::uint32_t RVHT_ONITEMIMAGE = 0x0002;
constexpr std::uint32_t RVHT_ONITEMCHECK = 0x0004;
constexpr std::uint32_t RVHT_ONITEMTEXT = 0x0008;
constexpr std::uint32_t RVHT_ONITEMPREVIEW = 0x0010;
constexpr std::uint32_t RVHT_ONITEMTREEBOX = 0x0020;
constexpr std::uint32_t RVHT_ONFIXEDROW = 0x0040;
constexpr std::uint32_t RVHT_ABOVE = 0x0100;
constexpr std::uint32_t RVHT_BELOW = 0x0200;
constexpr std::uint32_t RVHT_TORIGHT = 0x0400;
constexpr std::uint32_t RVHT_TOLEFT = 0x0800;

// An item of the tree. Siblings form a list; the parent of top-level items is the control's root.
struct _TREEITEM
{
    _TREEITEM* parent = nullptr;
    _TREEITEM* firstChild = nullptr;
    _TREEITEM* nextSibling = nullptr;
    std::int32_t item = RVI_NONE; // the stored item that it shows
    std::int32_t subitem = -1;    // if >= 0, the row shows this subitem alone, and is sorted by it
    std::int32_t expanded = 0;
    std::int32_t level = 0;
};
static_assert(sizeof(void*) != 8 || (sizeof(_TREEITEM) == 40 && offsetof(_TREEITEM, item) == 24));

// What GetNextItem returns.
constexpr unsigned RVGN_ROOT = 0; // the top-level ancestor, which can be the item itself
constexpr unsigned RVGN_NEXT = 1;
constexpr unsigned RVGN_PREVIOUS = 2;
constexpr unsigned RVGN_PARENT = 3;
constexpr unsigned RVGN_CHILD = 4;
constexpr unsigned RVGN_FOCUSED = 5;

// Actions of Expand.
constexpr unsigned RVE_COLLAPSE = 1;
constexpr unsigned RVE_EXPAND = 2;
constexpr unsigned RVE_TOGGLE = 3;

namespace report
{

// A stored item, or the one that a callback has filled.
struct Item
{
    ZEMA::String cells; // of all subitems, in the encoding of the control
    std::int32_t backgroundColor = -1;
    std::int32_t previewHeight = 0;
    std::int32_t treeLevel = -1;
    std::uint32_t state = 0;
    std::int64_t itemData = 0;
    ZEMA::String previewText;
    std::int32_t previewTextColor = -1;
    _TREEITEM* treeItem = nullptr;
};

// A subitem's definition.
struct SubItem
{
    std::uint32_t format = 0;
    std::int32_t width = -1;
    std::int32_t header1 = 0;
    std::int32_t header2 = 0;
    std::int32_t image = 0;
    ZEMA::String text;
    std::vector<ZEMA::String> choices; // texts that an editor of its cells offers
};

} // namespace report
