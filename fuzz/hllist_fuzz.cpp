// Runs random operation sequences on an HLList next to a model made of a vector
// and a model cursor (which keeps the -1 cursorIndex skew), and checks the ring,
// the values and the cursor after every step.
#include "container/hllist.h"

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <vector>

namespace {

struct Bytes {
    const uint8_t* p;
    size_t n;
    bool Empty() const { return n == 0; }
    uint8_t Next()
    {
        if (!n)
            return 0;
        --n;
        return *p++;
    }
};

struct Model {
    std::vector<uint32_t> v;
    LONG cursorIndex = 0;
    LONG cursorPos = -1; // position of the node in cursor; -1 for a null cursor
    bool sorted = false;
};

bool g_failAlloc;

LPVOID CALLBACK FuzzAlloc(HLList* list, LPVOID data)
{
    return g_failAlloc ? nullptr : HLDefaultAlloc(list, data);
}

void Fail(const char* what)
{
    fprintf(stderr, "hllist model mismatch: %s\n", what);
    abort();
}

#define CHECK(cond)              \
    do {                         \
        if (!(cond))             \
            Fail(#cond);         \
    } while (0)

int Cmp(uint32_t key, uint32_t value)
{
    int r = memcmp(&key, &value, sizeof key);
    return (r > 0) - (r < 0);
}

uint32_t Value(LPVOID node)
{
    uint32_t v;
    memcpy(&v, HLDefaultData(nullptr, node), sizeof v);
    return v;
}

// The list's stepping, on positions: a cursorIndex that says -1 while the
// cursor is on the first node makes forward steps land one too far.
LONG Step(Model& m, LONG i)
{
    LONG n = (LONG)m.v.size();
    if (i == -1) {
        m.cursorPos = n - 1;
        m.cursorIndex = n - 1;
        return m.cursorPos;
    }
    if (i < m.cursorIndex || m.cursorPos < 0) {
        m.cursorIndex = 0;
        m.cursorPos = 0;
    }
    if (i > m.cursorIndex) {
        m.cursorPos = (LONG)((m.cursorPos + (int64_t)(i - m.cursorIndex)) % n);
        m.cursorIndex = i;
    }
    return m.cursorPos;
}

void Check(const HLList* l, const Model& m)
{
    LONG n = (LONG)m.v.size();
    CHECK(l->count == n);
    CHECK(((l->flags & HLLIST_EMPTY) != 0) == (n == 0));
    CHECK(((l->flags & HLLIST_SORTED) != 0) == m.sorted);
    CHECK(l->cursorIndex == m.cursorIndex);
    if (n == 0) {
        CHECK(!l->first && !l->last && !l->cursor);
        return;
    }
    CHECK(l->first && l->last && l->cursor);
    HLNode* node = l->first;
    HLNode* cursorNode = nullptr;
    for (LONG i = 0; i < n; ++i) {
        CHECK(node != nullptr);
        CHECK(i == 0 || node != l->first);
        CHECK(Value(node) == m.v[i]);
        if (i == m.cursorPos)
            cursorNode = node;
        if (i == n - 1)
            CHECK(node == l->last);
        node = node->next;
    }
    CHECK(node == l->first);
    CHECK(l->cursor == cursorNode);
}

LONG ModelAppend(Model& m, uint32_t value)
{
    if (g_failAlloc)
        return (LONG)m.v.size() - 1;
    if (m.v.empty())
        m.cursorPos = 0; // cursorIndex is left as it is
    m.v.push_back(value);
    return (LONG)m.v.size() - 1;
}

LONG ModelInsert(Model& m, LONG index, uint32_t value)
{
    LONG n = (LONG)m.v.size();
    if (index < 0 || index >= n)
        return ModelAppend(m, value);
    if (g_failAlloc)
        return -1;
    LONG at = index == 0 ? 0 : Step(m, index - 1) + 1;
    m.v.insert(m.v.begin() + at, value);
    m.cursorIndex = 0;
    m.cursorPos = 0;
    return index;
}

BOOL ModelRemove(Model& m, LONG index)
{
    LONG n = (LONG)m.v.size();
    if (index < 0 || index >= n)
        return 0;
    LONG victim = (Step(m, index - 1) + 1) % n;
    m.v.erase(m.v.begin() + victim);
    m.cursorIndex = 0;
    m.cursorPos = m.v.empty() ? -1 : 0;
    return 1;
}

// Moves as a splice on the cyclic order of node identities, then turns the
// order so that the new first node leads.
LONG ModelMove(Model& m, LONG from, LONG to)
{
    LONG n = (LONG)m.v.size();
    if (from == to || n == 0 || from < 0 || from > n || to < 0 || to > n)
        return -1;
    LONG moved = (Step(m, from - 1) + 1) % n;
    LONG target = (Step(m, to - 1) + 1) % n;
    LONG afterMoved = (moved + 1) % n, afterTarget = (target + 1) % n;
    LONG first = 0;
    std::vector<LONG> order;
    for (LONG i = 0; i < n; ++i)
        order.push_back(i);
    bool splice;
    if (to < from) {
        if (to == 0)
            first = moved;
        splice = target != afterMoved && target != moved;
    } else {
        if (from == 0)
            first = 1 % n;
        splice = afterTarget != moved && target != moved;
    }
    if (splice) {
        order.erase(order.begin() + moved);
        LONG t = 0;
        while (order[t] != target)
            ++t;
        order.insert(order.begin() + (to < from ? t : t + 1), moved);
    }
    LONG lead = 0;
    while (order[lead] != first)
        ++lead;
    std::vector<uint32_t> v;
    for (LONG i = 0; i < n; ++i)
        v.push_back(m.v[order[(lead + i) % n]]);
    m.v = v;
    m.cursorIndex = n - 1;
    m.cursorPos = n - 1;
    return to;
}

LONG ModelFind(Model& m, uint32_t key, LONG start, LONG* found)
{
    *found = 0;
    LONG n = (LONG)m.v.size();
    if (n == 0)
        return -1;
    LONG index = start < 0 ? 0 : start % n;
    LONG pos = Step(m, index);
    for (LONG visits = 0; visits < n;) {
        int r = Cmp(key, m.v[pos]);
        ++visits;
        if (r == 0) {
            *found = index;
            return pos;
        }
        if (m.sorted && r < 0) {
            visits += n - 1 - index;
            index = 0;
            pos = 0;
        } else {
            pos = (pos + 1) % n;
            index = index + 1 == n ? 0 : index + 1;
        }
    }
    return -1;
}

LONG ModelInsertPos(const Model& m, uint32_t key)
{
    LONG n = (LONG)m.v.size();
    if (n == 0)
        return 0;
    if (Cmp(key, m.v[n - 1]) > 0)
        return n;
    for (LONG i = 0; i < n; ++i)
        if (Cmp(key, m.v[i]) <= 0)
            return i;
    return n;
}

HLNode* NodeAt(const HLList* l, LONG pos)
{
    HLNode* node = l->first;
    while (pos-- > 0)
        node = node->next;
    return node;
}

// An index around the list's range, negative ones included.
LONG Index(Bytes& in, LONG n) { return (LONG)(in.Next() % (uint32_t)(n + 4)) - 2; }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Bytes in{data, size};
    Model m;
    m.sorted = in.Next() & 1;
    HLList* l = HLListCreate(sizeof(uint32_t), FuzzAlloc, nullptr, nullptr, nullptr, nullptr, m.sorted ? 3 : 2);
    CHECK(l != nullptr);
    m.cursorIndex = 0;
    for (int steps = 0; !in.Empty() && steps < 400; ++steps) {
        uint8_t op = in.Next();
        g_failAlloc = (op & 0xC0) == 0xC0;
        LONG n = (LONG)m.v.size();
        uint32_t value = in.Next();
        switch (op % 9) {
        case 0:
            CHECK(HLListAppend(l, &value) == ModelAppend(m, value));
            break;
        case 1: {
            LONG index = Index(in, n);
            CHECK(HLListInsert(l, index, &value) == ModelInsert(m, index, value));
            break;
        }
        case 2: {
            LONG index = Index(in, n);
            CHECK(HLListRemove(l, index) == ModelRemove(m, index));
            break;
        }
        case 3: {
            LONG index = Index(in, n);
            LPVOID node = HLListGetItem(l, index);
            if (index < -1 || index >= n) {
                CHECK(node == nullptr);
            } else {
                LONG pos = Step(m, index);
                if (n == 0)
                    m.cursorPos = -1;
                CHECK(node == (n ? (LPVOID)NodeAt(l, pos) : nullptr));
            }
            break;
        }
        case 4: {
            LONG from = Index(in, n), to = Index(in, n);
            CHECK(HLListMove(l, from, to) == ModelMove(m, from, to));
            break;
        }
        case 5: {
            if (n && (value & 1))
                value = m.v[value % n]; // mostly search for what is there
            LONG start = (int8_t)in.Next();
            LONG found = 55, modelFound;
            LPVOID node = HLListFind(l, &value, start, &found);
            LONG pos = ModelFind(m, value, start, &modelFound);
            CHECK(found == modelFound);
            CHECK(node == (pos < 0 ? nullptr : (LPVOID)NodeAt(l, pos)));
            break;
        }
        case 6: {
            LONG expected = m.sorted ? ModelInsert(m, ModelInsertPos(m, value), value) : ModelAppend(m, value);
            CHECK(HLListAdd(l, &value) == expected);
            break;
        }
        case 7:
            CHECK(HLListEmpty(l) == 1);
            m.v.clear();
            m.cursorIndex = 0;
            m.cursorPos = -1;
            break;
        case 8: {
            // Dup steps the source through every index, skew and all.
            std::vector<uint32_t> copied;
            for (LONG i = 0; i < n; ++i) {
                LONG pos = Step(m, i);
                if (!g_failAlloc)
                    copied.push_back(m.v[pos]);
            }
            HLList* dup = HLListDup(l);
            CHECK(dup != nullptr && dup->count == (LONG)copied.size());
            for (LONG i = 0; i < dup->count; ++i)
                CHECK(Value(NodeAt(dup, i)) == copied[i]);
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
