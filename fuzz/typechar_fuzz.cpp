// Random key sequences through HDataTypeChar and HDataDeleteChar into a heap
// buffer of exactly its capacity: the text never passes the buffer, stays
// terminated, and a refused key leaves it as it was.
#include "fuzz_typed.h"
#include "typed/keys.h"
#include <stdlib.h>
#include <string.h>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 5)
        return 0;
    char cls = FuzzClass(data[0]), type = FuzzType(data[1]);
    FuzzLocale(data[2]);
    SetDateSep(kFuzzSeparators[(data[2] >> 3) % (sizeof kFuzzSeparators - 1)]);
    int capacity = 1 + data[3] % 48;
    size_t maskLength = data[4] % 24;
    bool nullMask = data[4] & 0x80;
    data += 5;
    size -= 5;
    if (maskLength > size)
        maskLength = size;
    std::string mask((const char*)data, maskLength);
    data += maskLength;
    size -= maskLength;

    // The first bytes up to a 0 are the starting text, cut to the buffer.
    std::vector<char> text((size_t)capacity, 0);
    size_t start = 0;
    while (start < size && data[start] && start + 1 < (size_t)capacity) {
        text[start] = (char)data[start];
        ++start;
    }
    while (start < size && data[start]) ++start;
    if (start < size) ++start;
    data += start;
    size -= start;

    const char* m = nullMask ? nullptr : mask.c_str();
    for (size_t i = 0; i + 1 < size; i += 2) {
        int length = (int)strlen(text.data());
        int position = data[i + 1] % (length + 2);
        std::string before(text.data());
        if (data[i] == 0x7f) {
            int r = HDataDeleteCharN(cls, type, text.data(), m, position, capacity);
            if (r != 0 && r != 1)
                abort();
        } else {
            int advance = -99, repaint = -99;
            int r = HDataTypeCharN(cls, type, text.data(), m, position, (char)data[i], &advance, &repaint, capacity);
            if (r && (advance != 0 || repaint != 0 || before != text.data()))
                abort(); // a refused key changes nothing
            if (!r && (advance == -99 || repaint == -99))
                abort();
        }
        if (!memchr(text.data(), 0, text.size()))
            abort(); // the text stays terminated inside its buffer
    }
    return 0;
}
