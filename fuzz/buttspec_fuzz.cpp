// HButt's specification text from random bytes: read as a check box or not,
// every field stays terminated inside its buffer, no field is longer than the
// text, fields past the count are empty, and the type letter is one that stores.
#include "buttons/hbutt.h"
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    BOOL checkBox = data[0] & 1;
    std::string text((const char*)data + 1, size - 1);
    COLORREF color = 0, transparent = 0;
    HButtSpec spec;
    BOOL read = HButtSpecRead(text.c_str(), checkBox, &color, &transparent, &spec);
    if (read != (text[0] >= '0' && text[0] <= '9'))
        abort();
    if (!read)
        return 0;
    if (spec.positionCount < 1 || spec.positionCount > 3 || spec.fieldCount > 3)
        abort();
    for (int i = 0; i < spec.positionCount; ++i)
        if (spec.positions[i] > 9)
            abort();
    if (!strchr("bhswiluW", spec.dataType))
        abort();
    const char* fields[] = {spec.caption, spec.images, spec.sound};
    for (int i = 0; i < 3; ++i) {
        size_t length = strnlen(fields[i], kButtSpecSize);
        if (length >= (size_t)kButtSpecSize || length > text.size())
            abort();
        if (i >= spec.fieldCount && length)
            abort();
    }
    return 0;
}
