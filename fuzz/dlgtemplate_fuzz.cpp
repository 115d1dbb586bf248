// A dialog template from arbitrary bytes through the walker: every string and
// every item it hands out lies inside the bytes, and the walk always ends.
#include "frame/dlgtemplate.h"
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <vector>

namespace {

void CheckInside(const HDlgString& s, const uint8_t* data, size_t size)
{
    if (!s.length)
        return;
    if (s.at < data || s.at > data + size || (size_t)(data + size - s.at) / 2 < s.length)
        abort();
    WORD wide[kDlgTextSize];
    size_t n = HDlgCopyWide(s, wide, kDlgTextSize);
    if (n >= (size_t)kDlgTextSize || wide[n] != 0)
        abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    // A copy of exactly the bytes present, so the sanitizer sees any read past them.
    std::vector<uint8_t> bytes(data, data + size);
    const BYTE* tmpl = bytes.data();
    HDlgHeader h;
    if (!HDlgReadHeader(tmpl, size, &h))
        return 0;
    CheckInside(h.caption, tmpl, size);
    CheckInside(h.face, tmpl, size);
    if (h.itemsAt > size)
        abort();
    size_t at = h.itemsAt;
    HDlgItem item;
    for (int i = 0; i < h.count; ++i) {
        size_t before = at;
        if (!HDlgReadItem(tmpl, size, &at, &item)) {
            if (at != before)
                abort();
            break;
        }
        if (at <= before || at > size)
            abort();
        if (!item.knownClass)
            CheckInside(item.className, tmpl, size);
        CheckInside(item.title, tmpl, size);
        if (item.data < tmpl || item.data + item.dataSize > tmpl + size)
            abort();
        volatile BYTE sink = 0;
        for (WORD k = 0; k < item.dataSize; ++k)
            sink = sink ^ item.data[k];
        (void)sink;
    }
    return 0;
}
