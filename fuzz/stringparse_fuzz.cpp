// StringParse on random text with random special characters: the result stays
// within its buffer and is terminated, and rest lies within the text.
#include "frame/strings.h"
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 4)
        return 0;
    char stop = (char)data[0], escape = (char)data[1], replace = (char)data[2], replacement = (char)data[3];
    std::string text((const char*)data + 4, size - 4); // may hold NULs: the text ends at the first
    LPCSTR rest = nullptr;
    LPSTR result = StringParse(text.c_str(), stop, escape, replace, replacement, &rest);
    size_t length = strnlen(result, kStringParseSize);
    if (length >= (size_t)kStringParseSize)
        abort(); // no terminator inside the buffer
    size_t textLength = strlen(text.c_str());
    if (rest < text.c_str() || rest > text.c_str() + textLength)
        abort();
    // The result never holds more characters than the text consumed.
    if (length > (size_t)(rest - text.c_str()))
        abort();
    // The stop character appears only where it was escaped or is the replacement.
    if (stop && stop != replacement && !escape && memchr(result, stop, length))
        abort();
    return 0;
}
