// Helpers shared by the fuzz targets of the typed layer: picking class and type
// letters from bytes, value buffers sized to what a type may write, and the
// locale separators.
#pragma once
#include "quill32.h"
#include "typed/typed_internal.h"
#include <stdint.h>
#include <initializer_list>

constexpr char kFuzzClasses[] = "abcdhkmnstzq"; // the eleven, and one that is none
constexpr char kFuzzTypes[] = "bhswiluWfdMDQqTmsuAadlIitx";
constexpr char kFuzzSeparators[] = ".,' -/:;";

inline char FuzzClass(uint8_t b) { return kFuzzClasses[b % (sizeof kFuzzClasses - 1)]; }
inline char FuzzType(uint8_t b) { return kFuzzTypes[b % (sizeof kFuzzTypes - 1)]; }

// Bytes a value of the pair may occupy: the number code writes by the type's
// number storage, the date code by the type's date storage whatever the class.
inline int FuzzValueSize(char cls, char type)
{
    int size = GetDataSize(cls, type);
    for (char family : {'n', 'a', 'd', 't', 'h'}) {
        int s = GetDataSize(family, type);
        if (s > size)
            size = s;
    }
    return size > 0 ? size : 1;
}

// Sets the decimal and thousands separators from a byte; the setters refuse
// letters and digits, so the locale stays a legal one.
inline void FuzzLocale(uint8_t b)
{
    SetDecimalSep(kFuzzSeparators[b % (sizeof kFuzzSeparators - 1)]);
    SetThousandsSep(kFuzzSeparators[(b / 8) % (sizeof kFuzzSeparators - 1)]);
}
