// HButt's specification text, read without windows: positions, a check box's
// type letter, colour sections, and the caption, image and sound fields.
#include "buttons/hbutt.h"
#include "edit/typed.h"
#include "frame/strings.h"
#include <string.h>

static bool IsDigit(char c) { return c >= '0' && c <= '9'; }

BOOL HButtSpecRead(LPCSTR text, BOOL checkBox, COLORREF* colorText, COLORREF* colorTransparent, HButtSpec* spec)
{
    if (!spec || !HButtIsSpec(text))
        return FALSE;
    memset(spec, 0, sizeof *spec);
    // A longer text is cut to the work copy; every field of a real one fits.
    char buffer[kButtSpecSize];
    _fstrnzcpy(buffer, text, kButtSpecSize);
    LPSTR p = buffer;
    while (spec->positionCount < 3 && IsDigit(*p))
        spec->positions[spec->positionCount++] = (BYTE)(*p++ - '0');
    spec->dataType = HTYPE_WORD;
    if (checkBox && *p != ';' && ValidType(HCLASS_BOOL, *p))
        spec->dataType = *p++;
    LPSTR rest = strchr(p, ';');
    if (!rest)
        return TRUE; // positions alone: no caption, no images, no sound
    ++rest;
    COLORREF ignored = 0;
    spec->colors = HTypedParseColors(rest, colorText ? colorText : &ignored,
                                     colorTransparent ? colorTransparent : &ignored);
    // StringParse keeps one static result: each field is copied out before the next.
    LPSTR fields[] = {spec->caption, spec->images, spec->sound};
    LPCSTR next = rest;
    for (int i = 0; i < 3 && next; ++i) {
        _fstrnzcpy(fields[i], StringParse(next, ';', '\\', '^', '\n', &next), kButtSpecSize);
        spec->fieldCount = (BYTE)(i + 1);
        if (!*next)
            next = nullptr; // an empty field behind a last ";" is as good as none
    }
    return TRUE;
}
