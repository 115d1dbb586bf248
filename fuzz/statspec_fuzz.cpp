// HStat's specification text from random bytes: the content lies inside the
// work copy and is terminated there, and the shown text has no caret left.
#include "buttons/hstat.h"
#include "seam.h"
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string spec((const char*)data, size);
    char buffer[kStatSpecSize];
    COLORREF text = 0, back = 0;
    LPCSTR content = HStatSpecContent(spec.c_str(), &text, &back, buffer);
    if (content < buffer || content >= buffer + kStatSpecSize)
        abort();
    size_t length = strnlen(content, (size_t)(buffer + kStatSpecSize - content));
    if (content + length >= buffer + kStatSpecSize)
        abort(); // no terminator inside the work copy
    LPSTR shown = HStatSpecText(content);
    if (shown) {
        if (strchr(shown, '^') || strlen(shown) > length)
            abort();
        SeamFree(shown);
    }
    return 0;
}
