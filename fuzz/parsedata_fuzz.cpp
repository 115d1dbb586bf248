// ParseData for every class with random text and mask, into a value buffer of
// exactly the bytes its type may take; strings into a buffer as long as the
// text. Numbers that read back must format and read again to the same double.
#include "fuzz_typed.h"
#include "typed/format.h"
#include <math.h>
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
    bool nullMask = data[3] & 1, bounded = data[3] & 2;
    size_t maskLength = data[4];
    data += 5;
    size -= 5;
    if (maskLength > size)
        maskLength = size;
    std::string mask((const char*)data, maskLength), text((const char*)data + maskLength, size - maskLength);
    const char* m = nullMask ? nullptr : mask.c_str();
    const char* t = text.c_str(); // up to the first NUL

    if (cls == 's' || cls == 'm') {
        size_t length = strlen(t);
        // ParseData itself copies whole: the buffer is the text's length and a
        // terminator, which strip mode never passes.
        int capacity = bounded ? (int)(length / 2 + 1) : (int)length + 1;
        std::vector<char> value((size_t)capacity);
        if (bounded)
            HParseDataN(nullptr, value.data(), capacity, cls, type, m, t, nullptr);
        else
            ParseData(nullptr, value.data(), cls, type, m, t, nullptr);
        if (!memchr(value.data(), 0, value.size()))
            abort(); // not terminated inside its buffer
        return 0;
    }

    std::vector<unsigned char> value((size_t)FuzzValueSize(cls, type));
    ParseData(nullptr, value.data(), cls, type, m, t, nullptr);

    if ((cls == 'n' || cls == 'c' || cls == 'z') && type == 'd' && g_cDecimalSep != '-') {
        double v;
        memcpy(&v, value.data(), sizeof v);
        if (v == 0 || (fabs(v) >= 1e-10 && fabs(v) < 1e100)) {
            char shown[256];
            if (FormatData(&v, 'n', 'd', nullptr, shown, sizeof shown, nullptr, FALSE) <= 0 && v != 0)
                abort();
            double back = HNumStrip(shown);
            if (back != v)
                abort(); // the default mask shows enough digits to read the same double
        }
    }
    return 0;
}
