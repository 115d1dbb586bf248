// HLList: the library's singly linked ring of nodes, addressed by index through
// a cached cursor, with its default callbacks for fixed-size records and strings.
#include "hllist.h"

#include "platform/seam.h"

#include <stdint.h>
#include <string.h>

#if defined(_WIN32) && !defined(_WIN64)
static_assert(sizeof(HLNode) == 4, "a node begins with one link word");
static_assert(offsetof(HLList, itemSize) == 0 && offsetof(HLList, count) == 4 &&
                  offsetof(HLList, cursorIndex) == 8 && offsetof(HLList, pfnAlloc) == 12 &&
                  offsetof(HLList, pfnCompare) == 16 && offsetof(HLList, pfnFree) == 20 &&
                  offsetof(HLList, pfnData) == 24 && offsetof(HLList, pfnDataCompare) == 28 &&
                  offsetof(HLList, userWord) == 32 && offsetof(HLList, first) == 40 &&
                  offsetof(HLList, last) == 44,
              "HLList layout");
#endif

// Moves the cursor to index i (-1 <= i < count) and gives its node. -1 is the
// last node at once. Otherwise a forward step walks on from the cursor, one hop
// per index, and a backward step, even by one, restarts from the head. The
// walk trusts cursorIndex: when it says -1 while the cursor is on the first
// node, the walk lands one node too far, and that is kept.
static HLNode* HLListStepTo(HLList* list, LONG i)
{
    if (i == -1) {
        list->cursor = list->last;
        list->cursorIndex = list->count - 1;
        return list->cursor;
    }
    if (i < list->cursorIndex || !list->cursor) {
        list->cursorIndex = 0;
        list->cursor = list->first;
    }
    if (i > list->cursorIndex) {
        HLNode* node = list->cursor;
        // The ring has no end; a null link is met only while HLListEmpty has it open.
        for (LONG k = list->cursorIndex; k < i && node; ++k)
            node = node->next;
        list->cursor = node;
        list->cursorIndex = i;
    }
    return list->cursor;
}

static void HLListSetEmptyBit(HLList* list)
{
    if (list->count == 0)
        list->flags |= HLLIST_EMPTY;
    else
        list->flags &= (WORD)~HLLIST_EMPTY;
}

// ---- Default callbacks ----

// Makes a node of the link word and a copy of the payload: itemSize bytes, or
// a whole string in string mode. A null data gives a zero-filled payload.
LPVOID CALLBACK HLDefaultAlloc(HLList* list, LPVOID data)
{
    if (!list)
        return nullptr;
    size_t size;
    if (list->itemSize == -1)
        size = data ? strlen((const char*)data) + 1 : 1;
    else if (list->itemSize < 0)
        return nullptr; // an owner stored a size the list can't honour
    else
        size = (size_t)list->itemSize;
    if (size > SIZE_MAX - sizeof(HLNode))
        return nullptr;
    HLNode* node = (HLNode*)SeamAlloc(sizeof(HLNode) + size);
    if (node && data)
        memcpy(node + 1, data, size);
    return node;
}

// Folds only A to Z, so that the order of other bytes doesn't hang on a locale.
static int HLFoldAZ(unsigned char c)
{
    return (c >= 'A' && c <= 'Z') ? c + ('a' - 'A') : c;
}

// Compares a key with the payload right behind the node's link word: through
// pfnDataCompare when the owner gave one, else as a string or as raw bytes.
LONG CALLBACK HLDefaultCompare(HLList* list, LPCVOID key, LPVOID node)
{
    if (!key || !list || !node)
        return -1;
    const unsigned char* payload = (const unsigned char*)HLDefaultData(list, node);
    if (list->pfnDataCompare)
        return list->pfnDataCompare(key, payload);
    const unsigned char* k = (const unsigned char*)key;
    if (list->itemSize == -1) {
        for (;; ++k, ++payload) {
            int a = HLFoldAZ(*k), b = HLFoldAZ(*payload);
            if (a != b)
                return a < b ? -1 : 1;
            if (a == 0)
                return 0;
        }
    }
    for (LONG i = 0; i < list->itemSize; ++i) {
        if (k[i] != payload[i])
            return k[i] < payload[i] ? -1 : 1;
    }
    return 0;
}

LONG CALLBACK HLDefaultFree(HLList* list, LPVOID node)
{
    if (!node)
        return 0;
    SeamFree(node);
    return 1;
}

LPVOID CALLBACK HLDefaultData(HLList* list, LPVOID node)
{
    return node ? (LPVOID)((HLNode*)node + 1) : nullptr;
}

// ---- Life of a list ----

HLList* QUILLAPI HLListCreate(LONG itemSize, HLLISTALLOCPROC pfnAlloc, HLLISTCOMPAREPROC pfnCompare,
                              HLDATACOMPAREPROC pfnDataCompare, HLLISTFREEPROC pfnFree,
                              HLLISTDATAPROC pfnData, UINT sorted)
{
    if (itemSize < -1)
        return nullptr;
    HLList* list = (HLList*)SeamAlloc(sizeof(HLList));
    if (!list)
        return nullptr;
    list->itemSize = itemSize;
    list->pfnAlloc = pfnAlloc ? pfnAlloc : HLDefaultAlloc;
    list->pfnCompare = pfnCompare ? pfnCompare : HLDefaultCompare;
    list->pfnFree = pfnFree ? pfnFree : HLDefaultFree;
    list->pfnData = pfnData ? pfnData : HLDefaultData;
    list->pfnDataCompare = pfnDataCompare;
    list->flags = (WORD)((sorted & HLLIST_SORTED) | HLLIST_EMPTY);
    return list;
}

// Frees every node in index order. The ring is opened first, and first already
// points past a node when pfnFree gets it. The cursor is cleared before each
// call so that a callback reading the list never walks from a freed node.
BOOL QUILLAPI HLListEmpty(HLList* list)
{
    if (!list)
        return 0;
    if (list->last)
        list->last->next = nullptr;
    while (list->first) {
        HLNode* node = list->first;
        list->first = node->next;
        list->cursor = nullptr;
        list->cursorIndex = 0;
        list->pfnFree(list, node);
    }
    list->flags |= HLLIST_EMPTY;
    list->cursor = list->last = list->first = nullptr;
    list->cursorIndex = 0;
    list->count = 0;
    return 1;
}

BOOL QUILLAPI HLListDestroy(HLList* list)
{
    if (!HLListEmpty(list))
        return 0;
    SeamFree(list);
    return 1;
}

// ---- Access and change by index ----

// Gives the node at index (-1 for the last), not its payload. With no nodes,
// -1 still passes the range test and leaves cursorIndex at -1: see HLListStepTo.
LPVOID QUILLAPI HLListGetItem(HLList* list, LONG index)
{
    if (!list || index < -1 || index >= list->count)
        return nullptr;
    return HLListStepTo(list, index);
}

// A failed allocation is reported as count - 1, the same as a success on a
// non-empty list. Appending never touches cursorIndex.
LONG HLListAppend(HLList* list, LPVOID data)
{
    if (!list)
        return -1;
    HLNode* node = (HLNode*)list->pfnAlloc(list, data);
    if (!node)
        return list->count - 1;
    if (!list->first) {
        list->first = node;
        list->cursor = node;
    } else {
        list->last->next = node;
    }
    list->last = node;
    node->next = list->first;
    list->flags &= (WORD)~HLLIST_EMPTY;
    ++list->count;
    return list->count - 1;
}

// Inserts in front of the node at index; an index outside the list appends.
// The cursor is reset to the head afterwards.
LONG QUILLAPI HLListInsert(HLList* list, LONG index, LPVOID data)
{
    if (!list)
        return -1;
    if (index < 0 || index >= list->count)
        return HLListAppend(list, data);
    HLNode* node = (HLNode*)list->pfnAlloc(list, data);
    if (!node)
        return -1;
    if (index == 0) {
        node->next = list->first;
        list->first = node;
        list->last->next = node;
    } else {
        HLNode* prev = HLListStepTo(list, index - 1);
        node->next = prev->next;
        prev->next = node;
        // Only a cursor skewed by the -1 quirk lands on the last node here;
        // the ring stays whole if the new node then becomes the last.
        if (prev == list->last)
            list->last = node;
    }
    ++list->count;
    list->flags &= (WORD)~HLLIST_EMPTY;
    list->cursorIndex = 0;
    list->cursor = list->first;
    return index;
}

// Unlinks the node at index and only then hands it to pfnFree, so that the
// callback sees a whole list. The node before index 0 is the last, by the ring.
BOOL QUILLAPI HLListRemove(HLList* list, LONG index)
{
    if (!list || index < 0 || index >= list->count)
        return 0;
    HLNode* prev = HLListStepTo(list, index - 1);
    HLNode* victim = prev->next;
    if (prev == victim) {
        list->first = list->last = nullptr;
    } else {
        prev->next = victim->next;
        if (victim == list->first)
            list->first = victim->next;
        else if (victim == list->last)
            list->last = prev;
    }
    --list->count;
    list->cursor = list->first;
    list->cursorIndex = 0;
    HLListSetEmptyBit(list);
    list->pfnFree(list, victim);
    return 1;
}

// Moves the node at from so that it stands at to. from and to may be 0 to
// count: count reaches the first node again by the ring. Moving the last node
// to the front, or the first to the end, only shifts the ring's start.
LONG HLListMove(HLList* list, LONG from, LONG to)
{
    if (!list || from == to)
        return -1;
    LONG count = list->count;
    if (count <= 0 || from < 0 || from > count || to < 0 || to > count)
        return -1;
    HLNode* beforeFrom = HLListStepTo(list, from - 1);
    HLNode* beforeTo = HLListStepTo(list, to - 1);
    HLNode* moved = beforeFrom->next;
    HLNode* afterMoved = moved->next;
    HLNode* target = beforeTo->next;
    HLNode* afterTarget = target->next;
    list->cursorIndex = count; // the next stepping restarts from the head
    // moved == target happens for 0 and count, which name the same node: no
    // link changes then, or the node would be linked to itself.
    if (to < from) {
        if (to == 0)
            list->first = moved;
        if (target != afterMoved && target != moved) {
            beforeFrom->next = afterMoved;
            moved->next = target;
            beforeTo->next = moved;
        }
    } else {
        if (from == 0)
            list->first = list->first->next;
        if (afterTarget != moved && target != moved) {
            beforeFrom->next = afterMoved;
            target->next = moved;
            moved->next = afterTarget;
        }
    }
    // last is found again by a walk from the head, on every move.
    list->last = HLListStepTo(list, count - 1);
    return to;
}

// ---- Searching and sorted insertion ----

// Searches the ring from start for a node that compares 0 with key, at most
// count visits. In a sorted list a negative comparison skips the rest up to
// the last node and goes on at the head, so items ahead of start are still
// tested. The cursor stays on the start node; the walk uses its own pointer.
LPVOID QUILLAPI HLListFind(HLList* list, LPCVOID key, LONG start, LPLONG found)
{
    if (found)
        *found = 0;
    if (!list || (list->flags & HLLIST_EMPTY) || !key || list->count <= 0)
        return nullptr;
    const LONG count = list->count;
    const bool sorted = (list->flags & HLLIST_SORTED) != 0;
    LONG index = start < 0 ? 0 : start % count;
    HLNode* node = HLListStepTo(list, index);
    for (LONG visits = 0; visits < count && node;) {
        LONG result = list->pfnCompare(list, key, node);
        ++visits;
        if (result == 0) {
            if (found)
                *found = index;
            return node;
        }
        if (sorted && result < 0) {
            visits += count - 1 - index; // the skipped nodes count as visited
            index = 0;
            node = list->first;
        } else {
            node = node->next;
            index = index + 1 == count ? 0 : index + 1;
        }
    }
    return nullptr;
}

// The first index whose node doesn't sort before key, so that equal items
// stand newest first. One comparison with the last node settles ascending input.
LONG HLListInsertPos(HLList* list, LPCVOID key)
{
    if (!list || (list->flags & HLLIST_EMPTY) || !key || list->count <= 0)
        return 0;
    if (list->pfnCompare(list, key, list->last) > 0)
        return list->count;
    HLNode* node = list->first;
    for (LONG i = 0; i < list->count && node; ++i, node = node->next) {
        if (list->pfnCompare(list, key, node) <= 0)
            return i;
    }
    return list->count;
}

LONG QUILLAPI HLListAdd(HLList* list, LPVOID data)
{
    if (!list)
        return -1;
    if (!(list->flags & HLLIST_SORTED))
        return HLListAppend(list, data);
    return HLListInsert(list, HLListInsertPos(list, data), data);
}

// ---- Whole lists ----

// Appends copies of source's items in source order, made by dest's callbacks.
// A failed allocation drops that item silently. The bound is re-read on every
// step, so copying a list into itself goes on while allocation succeeds.
BOOL QUILLAPI HLListCopy(HLList* dest, HLList* source)
{
    if (!dest || !source || !dest->pfnData)
        return 0;
    for (LONG i = 0; i < source->count; ++i) {
        HLNode* node = HLListStepTo(source, i);
        if (!node)
            break;
        HLListAppend(dest, dest->pfnData(source, node));
    }
    return 1;
}

HLList* HLListDup(HLList* source)
{
    if (!source)
        return nullptr;
    HLList* list = HLListCreate(source->itemSize, source->pfnAlloc, source->pfnCompare,
                                source->pfnDataCompare, source->pfnFree, source->pfnData,
                                source->flags & HLLIST_SORTED);
    if (!list)
        return nullptr;
    HLListCopy(list, source);
    return list;
}

// Orders two lists by their first differing item, then by length. A null list
// sorts before any list.
LONG HLListCompare(HLList* a, HLList* b)
{
    if (!a || !b)
        return (a ? 1 : 0) - (b ? 1 : 0);
    LONG n = a->count < b->count ? a->count : b->count;
    for (LONG i = 0; i < n; ++i) {
        HLNode* nodeB = HLListStepTo(b, i);
        HLNode* nodeA = HLListStepTo(a, i);
        if (!nodeA || !nodeB)
            break;
        LONG result = a->pfnCompare(a, nodeA, nodeB);
        if (result != 0)
            return result;
    }
    if (b->count < a->count)
        return 1;
    if (a->count < b->count)
        return -1;
    return 0;
}
