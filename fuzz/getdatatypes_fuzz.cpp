// GetDataTypes on random TypeSpec text: the returned pointer lies within the
// text, at 0, 3 or 6, and what it stored are valid pairs or the defaults.
#include "quill32.h"
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string spec((const char*)data, size);
    const char* text = spec.c_str();
    char class1 = '?', type1 = '?', class2 = '?', type2 = '?';
    LPCSTR rest = GetDataTypes(text, &class1, &type1, &class2, &type2);
    size_t offset = (size_t)(rest - text);
    if (rest < text || offset > strlen(text))
        abort();
    if (offset == 0) {
        if (class1 != 's' || type1 != 's' || class2 != 0 || type2 != '?')
            abort();
    } else if (offset == 3 || offset == 6) {
        if (!ValidType(class1, type1) || class1 != text[1] || type1 != text[2])
            abort();
        if (offset == 3 && (class2 != 0 || type2 != '?'))
            abort();
        if (offset == 6 && (!ValidType(class2, type2) || class2 != text[4] || type2 != text[5]))
            abort();
        if (GetDataSize(class1, type1) == 0 || (offset == 6 && GetDataSize(class2, type2) == 0))
            abort(); // every valid pair has a size
    } else {
        abort();
    }
    return 0;
}
