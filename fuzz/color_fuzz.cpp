// StringToColor and HTypedParseColors on random texts: the cut text stays within
// the original, is terminated, and colours are stored only when the result says so.
#include "edit/typed.h"
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string text((const char*)data, size); // the text ends at the first NUL
    constexpr COLORREF kSentinel = 0xDEADBEEF;
    COLORREF color = kSentinel;
    BOOL stored = StringToColor(text.c_str(), &color);
    if (!stored && color != kSentinel)
        abort();
    if (stored && (color >> 24))
        abort(); // a colour has no fourth byte

    size_t before = strlen(text.c_str());
    COLORREF first = kSentinel, second = kSentinel;
    int result = HTypedParseColors(text.data(), &first, size % 2 ? &second : nullptr);
    size_t after = strnlen(text.c_str(), before + 1);
    if (after > before)
        abort();
    // Each second-section colour adds 2, so the result counts them above bit 0.
    if (result < 0 || ((result >> 1) == 0 && second != kSentinel))
        abort();
    if ((result & 1) && (first >> 24))
        abort();
    // No section survives: an opening bracket in the output was escaped away... never.
    if (memchr(text.c_str(), '[', after))
        abort();
    return 0;
}
