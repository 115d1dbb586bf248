// FormatData with random bytes as the value and a random mask, into a text
// buffer of exactly `size` bytes: nothing is written past it, the text is
// terminated, and the result agrees with what was written.
#include "fuzz_typed.h"
#include <stdlib.h>
#include <string.h>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 6)
        return 0;
    char cls = FuzzClass(data[0]), type = FuzzType(data[1]);
    FuzzLocale(data[2]);
    BOOL editing = data[3] & 1;
    bool nullMask = data[3] & 2;
    int textSize = 1 + data[4] % 160;
    size_t maskLength = data[5];
    data += 6;
    size -= 6;
    if (maskLength > size)
        maskLength = size;
    std::string mask((const char*)data, maskLength);
    data += maskLength;
    size -= maskLength;

    std::vector<unsigned char> value;
    if (cls == 's' || cls == 'm') {
        value.assign(data, data + size);
        value.push_back(0);
    } else {
        value.assign((size_t)FuzzValueSize(cls, type), 0);
        memcpy(value.data(), data, size < value.size() ? size : value.size());
    }
    std::vector<char> text((size_t)textSize, '\x7f');
    BOOL negative = 99;
    int n = FormatData(value.data(), cls, type, nullMask ? nullptr : mask.c_str(), text.data(),
                       textSize, &negative, editing);
    if (textSize < 2) {
        if (n != 0 || negative != 99 || text[0] != '\x7f')
            abort(); // a size of 1 writes nothing
        return 0;
    }
    if (negative != 0 && negative != 1)
        abort();
    if (n < 0 || n > textSize - 1)
        abort();
    if (text[0] == '\x7f')
        return 0; // untouched: money, an unknown class, a failed date conversion
    const void* end = memchr(text.data(), 0, text.size());
    if (!end)
        abort(); // not terminated inside the buffer
    int length = (int)((const char*)end - text.data());
    bool number = cls == 'n' || cls == 'c' || cls == 'z';
    if (number && n == 0) {
        // Hashes of a value too wide, an empty display, or while editing the
        // bare point that the count leaves out.
        bool hashes = length == textSize - 1 && strspn(text.data(), "#") == (size_t)length;
        bool point = editing && length == 1 && text[0] == g_cDecimalSep;
        if (!hashes && !point && length != 0)
            abort();
    } else if (number) {
        if (length != n && !(editing && length == n + 1))
            abort(); // while editing the point is written but not counted
    } else if (cls != 'h' && length != n) {
        abort();
    }
    return 0;
}
