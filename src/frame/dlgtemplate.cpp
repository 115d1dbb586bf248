// The dialog template walker: header, fonts, items, ordinal classes, every
// read checked against the resource's size. Window-free, so a fuzzer reaches it.
#include "frame/dlgtemplate.h"
#include <string.h>

namespace {

// Ordinal classes of the platform's dialog templates.
constexpr struct { WORD ordinal; LPCSTR name; } kOrdinalClasses[] = {
    {0x80, "BUTTON"}, {0x81, "EDIT"}, {0x82, "STATIC"}, {0x83, "LISTBOX"}, {0x84, "SCROLLBAR"}, {0x85, "COMBOBOX"},
};
constexpr WORD kOrdinalMark = 0xFFFF;
constexpr size_t kItemFixed = 18; // style, extended style, x, y, cx, cy, id

// A little-endian reader that never passes the end.
struct Reader {
    const BYTE* base;
    size_t size;
    size_t at;
    bool Has(size_t n) const { return at <= size && size - at >= n; }
    bool Word(WORD* w)
    {
        if (!Has(2)) return false;
        *w = (WORD)(base[at] | (base[at + 1] << 8));
        at += 2;
        return true;
    }
    bool Dword(DWORD* d)
    {
        WORD lo, hi;
        if (!Has(4)) return false;
        Word(&lo);
        Word(&hi);
        *d = (DWORD)lo | ((DWORD)hi << 16);
        return true;
    }
    WORD PeekWord() const { return (WORD)(base[at] | (base[at + 1] << 8)); }
    // A zero-terminated 16-bit string; false if its terminator lies beyond the end.
    bool String(HDlgString* s)
    {
        size_t start = at;
        for (size_t p = at; p + 2 <= size; p += 2)
            if (!base[p] && !base[p + 1]) {
                s->at = base + start;
                s->length = (p - start) / 2;
                at = p + 2;
                return true;
            }
        return false;
    }
    // The string from here on, cut at the end of the template if unterminated.
    HDlgString StringOrRest() const
    {
        size_t p = at;
        while (p + 2 <= size && (base[p] || base[p + 1]))
            p += 2;
        return {base + at, (p - at) / 2};
    }
};

} // namespace

BOOL HDlgReadHeader(const BYTE* tmpl, size_t size, HDlgHeader* header)
{
    if (!tmpl || !header || size < 18)
        return FALSE;
    HDlgHeader h = {};
    Reader r = {tmpl, size, 0};
    WORD count, cx, cy;
    r.Dword(&h.style);
    r.at = 8;
    r.Word(&count);
    r.at = 14;
    r.Word(&cx);
    r.Word(&cy);
    h.count = (BYTE)count; // a template holds at most 255 items
    h.cx = (SHORT)cx;
    h.cy = (SHORT)cy;
    // Menu and class are read as strings only: an ordinal there is not understood.
    HDlgString menu, cls;
    if (!r.String(&menu) || !r.String(&cls) || !r.String(&h.caption))
        return FALSE;
    if (h.style & kDlgSetFont) {
        WORD points;
        if (!r.Word(&points) || !r.String(&h.face))
            return FALSE;
        h.pointSize = (SHORT)points;
    }
    h.itemsAt = r.at;
    *header = h;
    return TRUE;
}

BOOL HDlgReadItem(const BYTE* tmpl, size_t size, size_t* offset, HDlgItem* item)
{
    if (!tmpl || !offset || !item || *offset > size)
        return FALSE;
    size_t aligned = (*offset + 3) & ~(size_t)3;
    if (aligned < *offset || aligned > size)
        return FALSE;
    Reader r = {tmpl, size, aligned};
    if (!r.Has(kItemFixed))
        return FALSE;
    HDlgItem it = {};
    DWORD exStyle;
    WORD x, y, cx, cy;
    r.Dword(&it.style);
    r.Dword(&exStyle); // ignored: the controls are made with 0
    r.Word(&x);
    r.Word(&y);
    r.Word(&cx);
    r.Word(&cy);
    r.Word(&it.id);
    it.x = (SHORT)x;
    it.y = (SHORT)y;
    it.cx = (SHORT)cx;
    it.cy = (SHORT)cy;

    if (!r.Has(2))
        return FALSE;
    WORD first = r.PeekWord();
    if (first == kOrdinalMark || (first & 0x80)) {
        // An ordinal, with or without the 0xFFFF mark ahead of it.
        if (first == kOrdinalMark)
            r.at += 2;
        if (!r.Has(2))
            return FALSE;
        WORD ordinal = r.PeekWord();
        for (const auto& c : kOrdinalClasses)
            if (c.ordinal == ordinal)
                it.knownClass = c.name;
        if (!it.knownClass)
            it.className = r.StringOrRest(); // the class points at the ordinal word itself
        r.at += 2;
    } else if (!r.String(&it.className)) {
        return FALSE;
    }
    WORD dataSize;
    if (!r.String(&it.title) || !r.Word(&dataSize) || !r.Has(dataSize))
        return FALSE;
    it.data = tmpl + r.at;
    it.dataSize = dataSize;
    r.at += dataSize;
    *item = it;
    *offset = r.at;
    return TRUE;
}

size_t HDlgCopyWide(const HDlgString& s, WORD* out, size_t capacity)
{
    if (!out || !capacity)
        return 0;
    size_t n = s.length < capacity - 1 ? s.length : capacity - 1;
    for (size_t i = 0; i < n; ++i)
        out[i] = (WORD)(s.at[2 * i] | (s.at[2 * i + 1] << 8));
    out[n] = 0;
    return n;
}
