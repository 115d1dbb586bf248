// The class and type letters: TypeSpec parsing, validity, storage sizes, and the
// comparison, copy and difference of stored values.
#include "typed/types.h"
#include "seam.h"
#include <stdint.h>
#include <string.h>

namespace {

// ---- Validity: the type letters each class admits ----

struct ClassTypes {
    char cls;
    const char* types;
};

constexpr char kBoolTypes[] = "Wbhilsuw";
constexpr char kNumberTypes[] = "WbhilsuwMdf"; // all of class b's, and M, d, f

constexpr ClassTypes kClassTypes[] = {
    {HCLASS_DATETIME, "DQTmqsu"},
    {HCLASS_BOOL, kBoolTypes},
    {HCLASS_CURRENCY, kNumberTypes},
    {HCLASS_DATE, "Aadl"},
    {HCLASS_CHAR, "h"},
    {HCLASS_CLOCK, "T"},
    {HCLASS_MASKED, "s"},
    {HCLASS_NUMBER, kNumberTypes},
    {HCLASS_STRING, "s"},
    {HCLASS_TIME, "Iit"},
    {HCLASS_CALC, "df"},
};

const ClassTypes* FindClass(char cls)
{
    for (const ClassTypes& row : kClassTypes)
        if (row.cls == cls)
            return &row;
    return nullptr;
}

// ---- Sizes, by storage family ----

struct TypeSize {
    char family;
    char type;
    int size;
};

constexpr TypeSize kTypeSizes[] = {
    {HCLASS_NUMBER, HTYPE_BYTE, 1},
    {HCLASS_NUMBER, HTYPE_CHAR, 1},
    {HCLASS_NUMBER, HTYPE_SHORT, 2},
    {HCLASS_NUMBER, HTYPE_WORD, 2},
    {HCLASS_NUMBER, HTYPE_INT, 4},
    {HCLASS_NUMBER, HTYPE_LONG, 4},
    {HCLASS_NUMBER, HTYPE_ULONG, 4},
    {HCLASS_NUMBER, HTYPE_DWORD, 4},
    {HCLASS_NUMBER, HTYPE_FLOAT, 4},
    {HCLASS_NUMBER, HTYPE_DOUBLE, 8},
    {HCLASS_NUMBER, HTYPE_MONEY, 8},
    {HCLASS_DATETIME, HTYPE_DATETIME, 10},
    {HCLASS_DATETIME, HTYPE_SERIAL, 8},
    {HCLASS_DATETIME, HTYPE_SERIAL16, 4},
    {HCLASS_DATETIME, HTYPE_TIME_T, 4},
    {HCLASS_DATETIME, HTYPE_TM, 36},
    {HCLASS_DATETIME, HTYPE_SYSTEMTIME, 16},
    {HCLASS_DATETIME, HTYPE_OLEDATE, 8},
    {HCLASS_DATE, HTYPE_DOSDATE, 2},
    {HCLASS_DATE, HTYPE_DMY, 6},
    {HCLASS_DATE, HTYPE_YMD, 6},
    {HCLASS_DATE, HTYPE_YYYYMMDD, 4},
    {HCLASS_TIME, HTYPE_DOSTIME, 2},
    {HCLASS_TIME, HTYPE_HMSH, 4},
    {HCLASS_TIME, HTYPE_HMS, 6},
};

// ---- Comparison: each layout is a list of fields, most significant first ----

enum class FieldKind : uint8_t { S8, U8, S16, U16, S32, U32, F32, F64, Bits16 };

struct Field {
    uint8_t offset;
    FieldKind kind;
    uint8_t shift = 0; // Bits16: the field's lowest bit
    uint8_t width = 0; // Bits16: its number of bits
};

struct Layout {
    int count;
    Field fields[7];
};

using K = FieldKind;
constexpr Layout kS8 = {1, {{0, K::S8}}};
constexpr Layout kU8 = {1, {{0, K::U8}}};
constexpr Layout kS16 = {1, {{0, K::S16}}};
constexpr Layout kU16 = {1, {{0, K::U16}}};
constexpr Layout kS32 = {1, {{0, K::S32}}};
constexpr Layout kU32 = {1, {{0, K::U32}}};
constexpr Layout kF32 = {1, {{0, K::F32}}};
constexpr Layout kF64 = {1, {{0, K::F64}}};
constexpr Layout kMoney = {2, {{0, K::U32}, {4, K::U32}}};
constexpr Layout kDateTime = {7, {{0, K::S16}, {2, K::U8}, {3, K::U8}, {4, K::U8}, {5, K::U8}, {6, K::U8}, {8, K::U16}}};
constexpr Layout kSerial = {2, {{0, K::S32}, {4, K::S32}}};
constexpr Layout kSerial16 = {2, {{0, K::U16}, {2, K::U16}}};
constexpr Layout kSystemTime = {7, {{0, K::S16}, {2, K::U16}, {4, K::U16}, {6, K::U16}, {8, K::U16}, {10, K::U16}, {12, K::U32}}};
// struct tm holds tm_sec first: the year is the sixth integer.
constexpr Layout kTm = {6, {{20, K::S32}, {16, K::S32}, {12, K::S32}, {8, K::S32}, {4, K::S32}, {0, K::S32}}};
constexpr Layout kDosDate = {3, {{0, K::Bits16, 0, 7}, {0, K::Bits16, 7, 4}, {0, K::Bits16, 11, 5}}};
constexpr Layout kDmy = {3, {{2, K::U16}, {1, K::U8}, {0, K::U8}}};
constexpr Layout kYmd = {3, {{0, K::S16}, {2, K::U16}, {4, K::U16}}};
constexpr Layout kDosTime = {3, {{0, K::Bits16, 0, 5}, {0, K::Bits16, 5, 6}, {0, K::Bits16, 11, 5}}};
constexpr Layout kHmsh = {4, {{0, K::U8}, {1, K::U8}, {2, K::U8}, {3, K::U8}}};
constexpr Layout kHms = {3, {{0, K::U16}, {2, K::U16}, {4, K::U16}}};

// Stored values may sit at any address inside a record: read them by copy.
template <typename T> T Load(LPCVOID p, int offset)
{
    T v;
    memcpy(&v, (const char*)p + offset, sizeof v);
    return v;
}

template <typename T> LONG Order(T a, T b) { return a < b ? -1 : (b < a ? 1 : 0); }

LONG CompareField(const Field& f, LPCVOID a, LPCVOID b)
{
    switch (f.kind) {
    case K::S8: return Order(Load<int8_t>(a, f.offset), Load<int8_t>(b, f.offset));
    case K::U8: return Order(Load<uint8_t>(a, f.offset), Load<uint8_t>(b, f.offset));
    case K::S16: return Order(Load<int16_t>(a, f.offset), Load<int16_t>(b, f.offset));
    case K::U16: return Order(Load<uint16_t>(a, f.offset), Load<uint16_t>(b, f.offset));
    case K::S32: return Order(Load<int32_t>(a, f.offset), Load<int32_t>(b, f.offset));
    case K::U32: return Order(Load<uint32_t>(a, f.offset), Load<uint32_t>(b, f.offset));
    // Values that do not order, a NaN among them, compare equal.
    case K::F32: return Order(Load<float>(a, f.offset), Load<float>(b, f.offset));
    case K::F64: return Order(Load<double>(a, f.offset), Load<double>(b, f.offset));
    case K::Bits16: {
        unsigned mask = (1u << f.width) - 1;
        return Order((Load<uint16_t>(a, f.offset) >> f.shift) & mask,
                     (Load<uint16_t>(b, f.offset) >> f.shift) & mask);
    }
    }
    return 0;
}

// A missing value sorts before any present one.
inline bool OrderNulls(LPCVOID a, LPCVOID b, LONG* result)
{
    if (a && b)
        return false;
    *result = a ? 1 : (b ? -1 : 0);
    return true;
}

template <const Layout& L> LONG CALLBACK CompareLayout(LPCVOID a, LPCVOID b)
{
    LONG r;
    if (OrderNulls(a, b, &r))
        return r;
    for (int i = 0; i < L.count; ++i)
        if ((r = CompareField(L.fields[i], a, b)) != 0)
            return r;
    return 0;
}

inline unsigned char FoldAscii(unsigned char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; }

// Text without regard to case: ASCII letters folded, then byte order.
LONG CALLBACK CompareTextNoCase(LPCVOID a, LPCVOID b)
{
    LONG r;
    if (OrderNulls(a, b, &r))
        return r;
    const unsigned char* s = (const unsigned char*)a;
    const unsigned char* t = (const unsigned char*)b;
    for (;; ++s, ++t) {
        unsigned char x = FoldAscii(*s), y = FoldAscii(*t);
        if (x != y)
            return x < y ? -1 : 1;
        if (!x)
            return 0;
    }
}

struct TypeCompare {
    char family;
    char type;
    HLDATACOMPAREPROC proc;
};

constexpr TypeCompare kTypeCompares[] = {
    {HCLASS_NUMBER, HTYPE_CHAR, CompareLayout<kS8>},
    {HCLASS_NUMBER, HTYPE_BYTE, CompareLayout<kU8>},
    {HCLASS_NUMBER, HTYPE_SHORT, CompareLayout<kS16>},
    {HCLASS_NUMBER, HTYPE_WORD, CompareLayout<kU16>},
    {HCLASS_NUMBER, HTYPE_INT, CompareLayout<kS32>},
    {HCLASS_NUMBER, HTYPE_LONG, CompareLayout<kS32>},
    {HCLASS_NUMBER, HTYPE_ULONG, CompareLayout<kU32>},
    {HCLASS_NUMBER, HTYPE_DWORD, CompareLayout<kU32>},
    {HCLASS_NUMBER, HTYPE_FLOAT, CompareLayout<kF32>},
    {HCLASS_NUMBER, HTYPE_DOUBLE, CompareLayout<kF64>},
    {HCLASS_NUMBER, HTYPE_MONEY, CompareLayout<kMoney>},
    {HCLASS_DATETIME, HTYPE_DATETIME, CompareLayout<kDateTime>},
    {HCLASS_DATETIME, HTYPE_SERIAL, CompareLayout<kSerial>},
    {HCLASS_DATETIME, HTYPE_SERIAL16, CompareLayout<kSerial16>},
    {HCLASS_DATETIME, HTYPE_TIME_T, CompareLayout<kS32>},
    {HCLASS_DATETIME, HTYPE_TM, CompareLayout<kTm>},
    {HCLASS_DATETIME, HTYPE_SYSTEMTIME, CompareLayout<kSystemTime>},
    {HCLASS_DATETIME, HTYPE_OLEDATE, CompareLayout<kF64>},
    {HCLASS_DATE, HTYPE_DOSDATE, CompareLayout<kDosDate>},
    {HCLASS_DATE, HTYPE_DMY, CompareLayout<kDmy>},
    {HCLASS_DATE, HTYPE_YMD, CompareLayout<kYmd>},
    {HCLASS_DATE, HTYPE_YYYYMMDD, CompareLayout<kS32>},
    {HCLASS_TIME, HTYPE_DOSTIME, CompareLayout<kDosTime>},
    {HCLASS_TIME, HTYPE_HMSH, CompareLayout<kHmsh>},
    {HCLASS_TIME, HTYPE_HMS, CompareLayout<kHms>},
};

} // namespace

char HDataFamily(char cls)
{
    switch (cls) {
    case HCLASS_BOOL:
    case HCLASS_CURRENCY:
    case HCLASS_NUMBER:
    case HCLASS_CALC:
        return HCLASS_NUMBER;
    case HCLASS_DATETIME:
    case HCLASS_CLOCK:
        return HCLASS_DATETIME;
    case HCLASS_DATE:
    case HCLASS_TIME:
    case HCLASS_CHAR:
        return cls;
    case HCLASS_MASKED:
    case HCLASS_STRING:
        return HCLASS_STRING;
    default:
        return 0;
    }
}

extern "C" BOOL QUILLAPI ValidClass(char cls) { return FindClass(cls) != nullptr; }

extern "C" BOOL QUILLAPI ValidType(char cls, char type)
{
    const ClassTypes* row = FindClass(cls);
    if (!row || !type)
        return FALSE;
    return strchr(row->types, type) != nullptr;
}

// Looks the type up in the class's family, without asking ValidType.
extern "C" int QUILLAPI GetDataSize(char cls, char type)
{
    char family = HDataFamily(cls);
    if (family == HCLASS_STRING)
        return -1;
    if (family == HCLASS_CHAR)
        return 1;
    for (const TypeSize& row : kTypeSizes)
        if (row.family == family && row.type == type)
            return row.size;
    return 0;
}

// Class z has no comparison: its values are never sorted.
extern "C" HLDATACOMPAREPROC QUILLAPI HDataCompare(char cls, char type)
{
    char family = HDataFamily(cls);
    if (family == HCLASS_STRING)
        return CompareTextNoCase;
    if (family == HCLASS_CHAR)
        return CompareLayout<kS8>;
    if (cls == HCLASS_CALC)
        return nullptr;
    for (const TypeCompare& row : kTypeCompares)
        if (row.family == family && row.type == type)
            return row.proc;
    return nullptr;
}

// The defaults go in first, so that a text without a valid pair reads as a
// plain string. class2 is zeroed twice and type2 never defaulted: callers set
// the fourth place themselves.
extern "C" LPCSTR QUILLAPI GetDataTypes(LPCSTR spec, LPSTR class1, LPSTR type1, LPSTR class2,
                                        LPSTR type2)
{
    size_t length = spec ? strlen(spec) : 0;
    if (class1)
        *class1 = HCLASS_STRING;
    if (type1)
        *type1 = HTYPE_STRING;
    if (class2)
        *class2 = 0;
    if (type2 && class2)
        *class2 = 0;
    if (length <= 2 || spec[0] != '%' || !ValidClass(spec[1]) || !ValidType(spec[1], spec[2]))
        return spec;
    if (class1)
        *class1 = spec[1];
    if (type1)
        *type1 = spec[2];
    if (length <= 5 || spec[3] != '%' || !ValidType(spec[4], spec[5]))
        return spec + 3;
    if (class2)
        *class2 = spec[4];
    if (type2)
        *type2 = spec[5];
    return spec + 6;
}

extern "C" int QUILLAPI HDataCopy(LPVOID target, LPCVOID source, char cls, char type, int limit)
{
    if (!target || !source)
        return 0;
    if (HDataIsText(cls))
        return _fstrnzcpy((LPSTR)target, (LPCSTR)source, limit);
    int size = GetDataSize(cls, type);
    if (size <= 0)
        return 0;
    memcpy(target, source, (size_t)size);
    return size;
}

// Both text classes compare as text, with regard to case, up to the terminator.
extern "C" BOOL QUILLAPI HDataDiffers(LPCVOID first, LPCVOID second, char cls, char type)
{
    if (!first || !second)
        return FALSE;
    if (HDataIsText(cls))
        return strcmp((LPCSTR)first, (LPCSTR)second) != 0;
    int size = GetDataSize(cls, type);
    if (size <= 0)
        return FALSE;
    return memcmp(first, second, (size_t)size) != 0;
}
