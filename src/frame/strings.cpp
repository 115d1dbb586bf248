// Window-free helpers of the frame: bounded copies, the StringParse splitter,
// heap strings, the process-wide overwrite mode and the help file name.
#include "frame/strings.h"
#include "seam.h"
#include <string.h>

namespace {

int g_nOverwriteMode;                   // shared by every edit control of the process
char g_szParse[kStringParseSize];       // StringParse's result; each call overwrites it

} // namespace

// Bounded copy that always terminates; a negative limit means no limit.
extern "C" int QUILLAPI _fstrnzcpy(LPSTR target, LPCSTR source, int limit)
{
    if (!target || limit == 0)
        return 0;
    size_t length = source ? strlen(source) : 0;
    if (limit > 0 && length > (size_t)(limit - 1))
        length = (size_t)(limit - 1);
    if (length)
        memcpy(target, source, length);
    target[length] = 0;
    return (int)length;
}

// Copies text up to the stop character into the static buffer, dropping escape
// characters and replacing the replace character. Past the buffer's capacity
// the text is still scanned but not stored, so rest lands where it would have.
extern "C" LPSTR QUILLAPI StringParse(LPCSTR text, char stop, char escape, char replace,
                                      char replacement, LPCSTR* rest)
{
    size_t n = 0;
    auto put = [&n](char c) {
        if (n < kStringParseSize - 1)
            g_szParse[n++] = c;
    };
    LPCSTR p = text;
    if (p) {
        while (*p) {
            char c = *p;
            // The order of the tests matters: replace wins over escape and stop.
            if (c == replace) {
                if (replacement)
                    put(replacement);
                ++p;
            } else if (c == escape) {
                if (!p[1]) {
                    ++p;
                    break;
                }
                put(p[1]);
                p += 2;
            } else if (c == stop) {
                ++p;
                break;
            } else {
                put(c);
                ++p;
            }
        }
    }
    g_szParse[n] = 0;
    if (rest)
        *rest = p;
    return g_szParse;
}

LPSTR HStrDup(LPCSTR text)
{
    if (!text)
        return nullptr;
    size_t length = strlen(text);
    LPSTR copy = (LPSTR)SeamAlloc(length + 1);
    if (copy)
        memcpy(copy, text, length + 1);
    return copy;
}

LPSTR HStrDupFill(LPCSTR text, char fill)
{
    if (!text)
        return nullptr;
    size_t length = strlen(text);
    LPSTR copy = (LPSTR)SeamAlloc(length + 1); // zero-filled: the terminator is there
    if (!copy)
        return nullptr;
    memset(copy, fill, length);
    copy[length] = 0;
    return copy;
}

// The copy is made before the old string is freed, so that text may be the
// slot's own string.
LPSTR HStrReplace(LPSTR* slot, LPCSTR text)
{
    if (!slot)
        return nullptr;
    LPSTR copy = HStrDup(text);
    SeamFree(*slot);
    *slot = copy;
    return copy;
}

extern "C" int QUILLAPI SetOverwriteMode(int mode)
{
    int previous = g_nOverwriteMode;
    g_nOverwriteMode = mode;
    return previous;
}

extern "C" int QUILLAPI GetOverwriteMode(void) { return g_nOverwriteMode; }

extern "C" LPCSTR QUILLAPI GetHelpName(void) { return "Quillet.hlp"; }

// An empty stub kept for hosts that link against it.
extern "C" int QUILLAPI DemoDlg(void) { return 0; }
