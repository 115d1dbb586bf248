// HStat's specification text, read without windows: colours, the ";"
// separated fields, and the caret as a line break.
#include "buttons/hstat.h"
#include "edit/typed.h"
#include "frame/strings.h"
#include <string.h>

LPCSTR HStatSpecContent(LPCSTR text, COLORREF* colorText, COLORREF* colorBack, LPSTR buffer)
{
    // A longer text is cut to the buffer; every field of a real one fits.
    _fstrnzcpy(buffer, text ? text : "", kStatSpecSize);
    HTypedParseColors(buffer, colorText, colorBack);
    LPCSTR content = buffer;
    for (int field = 0; field < 2; ++field) {
        LPCSTR separator = strchr(content, ';');
        if (!separator)
            break;
        content = separator + 1;
    }
    return content;
}

LPSTR HStatSpecText(LPCSTR content)
{
    return HStrDup(StringParse(content, 0, 0, '^', '\n', nullptr));
}
