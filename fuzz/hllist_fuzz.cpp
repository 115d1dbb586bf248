// Runs random operation sequences on an HLList next to a model made of a vector
// and a model cursor (which keeps the -1 cursorIndex skew), and checks the ring,
// the values and the cursor after every step.
#include "container/hllist.h"

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

#define CHECK(cond) ((cond) ? (void)0 : (fprintf(stderr, "hllist model mismatch: %s\n", #cond), abort()))

bool g_failAlloc;
LPVOID CALLBACK FuzzAlloc(HLList* list, LPVOID data) { return g_failAlloc ? nullptr : HLDefaultAlloc(list, data); }

// The default compare on four-byte records: unsigned bytes in memory order.
int Cmp(uint32_t key, uint32_t value) { return memcmp(&key, &value, sizeof key); }
uint32_t Value(LPVOID node) { return *(const uint32_t*)HLDefaultData(nullptr, node); }

// The node at a position, walked from first; null for -1.
LPVOID NodeAt(const HLList* l, LONG pos)
{
    HLNode* node = pos < 0 ? nullptr : l->first;
    while (pos-- > 0)
        node = node->next;
    return node;
}

// The list as its payloads in order; pos is the position of the cursor's node
// (-1 for none) and index what cursorIndex says, which the -1 quirk can skew.
struct Model {
    std::vector<uint32_t> v;
    LONG index = 0, pos = -1;
    bool sorted = false;
    LONG n() const { return (LONG)v.size(); }

    // The list's stepping, on positions: a forward step walks on from pos.
    LONG Step(LONG i)
    {
        if (i == -1)
            return index = pos = n() - 1;
        if (i < index || pos < 0)
            index = pos = 0;
        if (i > index)
            pos = (LONG)((pos + (int64_t)(i - index)) % n()), index = i;
        return pos;
    }
    LONG Append(uint32_t x)
    {
        if (!g_failAlloc)
            pos = v.empty() ? 0 : pos, v.push_back(x); // index is left as it is
        return n() - 1;
    }
    LONG Insert(LONG at, uint32_t x)
    {
        if (at < 0 || at >= n())
            return Append(x);
        if (g_failAlloc)
            return -1;
        v.insert(v.begin() + (at ? Step(at - 1) + 1 : 0), x);
        index = pos = 0;
        return at;
    }
    BOOL Remove(LONG at)
    {
        if (at < 0 || at >= n())
            return 0;
        v.erase(v.begin() + (Step(at - 1) + 1) % n());
        index = 0, pos = v.empty() ? -1 : 0;
        return 1;
    }
    // A splice on the ring of positions, unless it would change nothing, then
    // the ring turned so that the new first node leads.
    LONG Move(LONG from, LONG to)
    {
        const LONG count = n();
        if (from == to || !count || from < 0 || from > count || to < 0 || to > count)
            return -1;
        LONG moved = (Step(from - 1) + 1) % count, target = (Step(to - 1) + 1) % count;
        LONG first = to < from ? (to == 0 ? moved : 0) : (from == 0 ? 1 % count : 0);
        std::vector<LONG> ring(count);
        std::iota(ring.begin(), ring.end(), 0);
        if (target != moved && (to < from ? target != (moved + 1) % count : (target + 1) % count != moved)) {
            ring.erase(ring.begin() + moved);
            ring.insert(std::find(ring.begin(), ring.end(), target) + (to > from), moved);
        }
        std::rotate(ring.begin(), std::find(ring.begin(), ring.end(), first), ring.end());
        std::transform(ring.begin(), ring.end(), v.begin(), [old = v](LONG p) { return old[p]; });
        index = pos = count - 1;
        return to;
    }
    // Gives the position found, or -1. A sorted search that meets a greater
    // item counts the rest up to the last as visited and goes on at the head.
    LONG Find(uint32_t key, LONG start, LONG* found)
    {
        *found = 0;
        LONG i = start < 0 || !n() ? 0 : start % n(), p = n() ? Step(i) : 0;
        for (LONG visits = 1; visits <= n(); ++visits) {
            if (int r = Cmp(key, v[p]); r == 0)
                return *found = i, p;
            else if (sorted && r < 0)
                visits += n() - 1 - i, i = p = 0;
            else
                p = (p + 1) % n(), i = (i + 1) % n();
        }
        return -1;
    }
    LONG InsertPos(uint32_t key) const
    {
        if (n() && Cmp(key, v.back()) <= 0) // the last is tried first
            for (LONG i = 0; i < n(); ++i)
                if (Cmp(key, v[i]) <= 0)
                    return i;
        return n();
    }
};

void Check(const HLList* l, const Model& m)
{
    const LONG n = m.n();
    CHECK(l->count == n && !(l->flags & HLLIST_EMPTY) == (n > 0) && !(l->flags & HLLIST_SORTED) == !m.sorted);
    CHECK(l->cursorIndex == m.index && (n > 0 || (!l->first && !l->last && !l->cursor)));
    HLNode* node = l->first;
    for (LONG i = 0; i < n; ++i, node = node->next) {
        CHECK(node && (i == 0 || node != l->first) && Value(node) == m.v[i]);
        CHECK((i == m.pos) == (node == l->cursor) && (i == n - 1) == (node == l->last));
    }
    CHECK(node == l->first);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const uint8_t* end = data + size;
    auto next = [&]() -> uint8_t { return data < end ? *data++ : 0; };
    Model m;
    m.sorted = next() & 1;
    HLList* l = HLListCreate(sizeof(uint32_t), FuzzAlloc, nullptr, nullptr, nullptr, nullptr, m.sorted ? 3 : 2);
    CHECK(l != nullptr);
    for (int steps = 0; data < end && steps < 400; ++steps) {
        const uint8_t op = next();
        g_failAlloc = (op & 0xC0) == 0xC0;
        const LONG n = m.n();
        uint32_t value = next();
        // An index around the list's range, negative ones included.
        auto index = [&]() { return (LONG)(next() % (uint32_t)(n + 4)) - 2; };
        LONG a = 0, b = 0, found = 55, modelFound = 0, pos;
        switch (op % 9) {
        case 0: CHECK(HLListAppend(l, &value) == m.Append(value)); break;
        case 1: a = index(), CHECK(HLListInsert(l, a, &value) == m.Insert(a, value)); break;
        case 2: a = index(), CHECK(HLListRemove(l, a) == m.Remove(a)); break;
        case 3:
            a = index(), pos = a < -1 || a >= n ? -1 : m.Step(a);
            CHECK(HLListGetItem(l, a) == NodeAt(l, pos));
            break;
        case 4: a = index(), b = index(), CHECK(HLListMove(l, a, b) == m.Move(a, b)); break;
        case 5:
            if (n && (value & 1))
                value = m.v[value % n]; // mostly search for what is there
            a = (int8_t)next();
            pos = m.Find(value, a, &modelFound);
            CHECK(HLListFind(l, &value, a, &found) == NodeAt(l, pos) && found == modelFound);
            break;
        case 6:
            a = m.sorted ? m.Insert(m.InsertPos(value), value) : m.Append(value);
            CHECK(HLListAdd(l, &value) == a);
            break;
        case 7: CHECK(HLListEmpty(l) == 1), m.v.clear(), m.index = 0, m.pos = -1; break;
        case 8: { // Dup steps the source through every index, skew and all.
            Model d;
            d.sorted = m.sorted;
            for (LONG i = 0; i < n; ++i)
                d.Append(m.v[m.Step(i)]);
            HLList* dup = HLListDup(l);
            CHECK(dup != nullptr);
            Check(dup, d);
            HLListDestroy(dup);
            break;
        }
        }
        Check(l, m);
    }
    g_failAlloc = false;
    HLListDestroy(l);
    return 0;
}
