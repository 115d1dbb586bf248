// Colours in creation texts: StringToColor's names and numbers, and the cutting
// of "[colour]" sections out of a mask. Window-free.
#include "edit/typed.h"

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
char Lower(char c) { return (c >= 'A' && c <= 'Z') ? (char)(c - 'A' + 'a') : c; }

// A colour name is known by its length and first letter alone.
struct ColorName {
    BYTE length;
    char first;
    COLORREF color;
};
constexpr ColorName kColorNames[] = {
    {3, 'r', 0x0000ff}, // red
    {4, 'b', 0xff0000}, // blue
    {4, 'c', 0xffff00}, // cyan
    {4, 'd', 0x7f7f00}, // dark cyan
    {4, 'g', 0x7f7f7f}, // grey
    {5, 'b', 0x000000}, // black
    {5, 'd', 0x00007f}, // dark red
    {5, 'g', 0x00ff00}, // green
    {5, 'l', 0xc0c0c0}, // light grey
    {5, 'o', 0x007f7f}, // olive
    {5, 'w', 0xffffff}, // white
    {6, 'd', 0x7f0000}, // dark blue
    {6, 'p', 0x7f007f}, // purple
    {6, 'y', 0x00ffff}, // yellow
    {7, 'd', 0x007f00}, // dark green
    {7, 'm', 0xff00ff}, // magenta
};

} // namespace

extern "C" BOOL QUILLAPI StringToColor(LPCSTR text, COLORREF* color)
{
    if (!text || !color)
        return 0;
    if (*text == '[')
        ++text;
    if (IsDigit(*text)) {
        // Up to three numbers, red, green, blue, each modulo 256; missing ones are 0.
        BYTE rgb[3] = {0, 0, 0};
        for (int i = 0; i < 3 && *text; ++i) {
            unsigned value = 0;
            for (; IsDigit(*text); ++text)
                value = (value * 10 + (unsigned)(*text - '0')) & 0xFF;
            rgb[i] = (BYTE)value;
            while (*text && !IsDigit(*text))
                ++text;
        }
        *color = (COLORREF)rgb[0] | ((COLORREF)rgb[1] << 8) | ((COLORREF)rgb[2] << 16);
        return 1;
    }
    size_t length = 0;
    while (IsLetter(text[length]))
        ++length;
    char first = Lower(*text);
    for (const ColorName& n : kColorNames)
        if (n.length == length && n.first == first) {
            *color = n.color;
            return 1;
        }
    return 0;
}

int HTypedParseColors(LPSTR text, COLORREF* first, COLORREF* second)
{
    if (!text || !first)
        return 0;
    int result = 0;
    int separators = 0;
    char section[kColorSectionSize];
    int collected = -1; // characters in section; -1 while not inside "[...]"
    char* out = text;
    for (const char* in = text; *in; ++in) {
        char c = *in;
        // A backslash before ";" or "[" removes only itself: the character still acts.
        if (c == '\\' && (in[1] == ';' || in[1] == '['))
            c = *++in;
        if (collected >= 0) {
            // Inside a section: collect, bounded; nothing reaches the output.
            if (collected < kColorSectionSize - 1)
                section[collected++] = c;
            if (c != ']')
                continue;
            section[collected] = 0;
            if (separators == 0)
                result = StringToColor(section, first);
            else if (separators == 1 && second && StringToColor(section, second))
                result += 2;
            collected = -1;
            continue;
        }
        if (c == '[') {
            section[0] = c;
            collected = 1;
            continue;
        }
        if (c == ';')
            ++separators;
        *out++ = c;
    }
    *out = 0;
    return result;
}
