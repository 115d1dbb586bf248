// Routines of the HLList container that stay inside the library: the list and
// grid code build on them, next to the exported HLList* functions in quill32.h.
#pragma once
#include "quill32.h"

// Appends a node made by pfnAlloc from data. Gives count - 1 whether or not
// the allocation succeeded (-1 for a null list); the cursor is left alone.
LONG HLListAppend(HLList* list, LPVOID data);

// Compares two lists item by item with a's pfnCompare, which is given a node
// of a as key and a node of b: it must take two nodes. Both cursors move.
LONG HLListCompare(HLList* a, HLList* b);

// Moves the node at from to to (each 0..count, count meaning the first node
// again by the ring). Gives to, or -1 for from == to, a bad index or an empty list.
LONG HLListMove(HLList* list, LONG from, LONG to);

// A new list with source's item size, callbacks and sorted bit, holding copies
// of its items; null if the list can't be made.
HLList* HLListDup(HLList* source);

// The index at which a sorted list would take key: in front of all items equal to it.
LONG HLListInsertPos(HLList* list, LPCVOID key);

// The callbacks that HLListCreate puts in place of null ones. A node made by
// HLDefaultAlloc is the link word with the payload right behind it.
LPVOID CALLBACK HLDefaultAlloc(HLList* list, LPVOID data);
LONG CALLBACK HLDefaultCompare(HLList* list, LPCVOID key, LPVOID node);
LONG CALLBACK HLDefaultFree(HLList* list, LPVOID node);
LPVOID CALLBACK HLDefaultData(HLList* list, LPVOID node);
