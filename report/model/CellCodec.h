// How the cells of an item lie in one string. The one place that knows.
//
// One field for each subitem, in their order:
//
//     01 <image> , <extra> , <check> , <text colour> , <length of text> 02 <text> <separator>
//
// The numbers are decimal, -1 stands for none, and the length is -1 when there is no text. A cell of which
// nothing is set reads "01 -1,-1,-1,-1,-1 02 separator". Texts end at the separator and not at their length,
// so that a text which contains one is cut there, and what follows counts as fields of its own.
//
// Fields are counted from 0; a negative number stands for field 0. What changes a string does all or, with
// std::bad_alloc, nothing.
#pragma once

#include "zemacore/String.h"

#include <string_view>

namespace report
{

struct Cell
{
    int image = -1;
    int extra = -1;
    int check = -1;
    int textColor = -1;
    bool hasText = false;
    std::string_view text; // empty when there is none

    bool operator==(const Cell&) const = default;
};

// The separator, shared by all controls; 07 at first. SetCellSeparator refuses, by false, the bytes that the
// fields are made of: NUL, 01, 02, digits, comma and minus. Strings made before keep the old one.
char CellSeparator();
bool SetCellSeparator(char separator);

// The field of an undefined cell. It has five numbers until the separator is set, and four from then on:
// the length is missing. That is deliberate, and such fields read as undefined too.
std::string_view UndefinedField();

// Field `field` of `cells`. What is missing, does not parse, or int does not hold counts as none, and so does
// all after the first number that is missing; other numbers come as they stand, so that those of a field
// broken by a separator in a text may be any. `text` lies within `cells`, and goes when they change.
Cell ReadCell(const ZEMA::String& cells, int field);

// Puts a field in the place of field `field`, adding undefined ones when the string has too few. The text
// goes in whole, separators included; it may lie within `cells`.
void WriteCell(ZEMA::String& cells, int field, const Cell& cell);

// A new undefined field before field `field`, adding undefined ones when there are too few.
void InsertCell(ZEMA::String& cells, int field);

// Takes field `field` out, with its separator; nothing when there is none.
void RemoveCell(ZEMA::String& cells, int field);

// Makes `cells` hold `count` undefined fields. Memory is reused.
void ResetCells(ZEMA::String& cells, int count);

// How two cells sort: less than, equal to or greater than 0. When either has text, by the bytes of the texts,
// a cell without text counting as empty; else by check states when either has a check box (>= 0), else by
// images.
int CompareCells(const Cell& cell1, const Cell& cell2);

} // namespace report
