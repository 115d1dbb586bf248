// Numbers: the storage types to and from a double, exact decimal digits of a
// double, number masks and their layout, and the reading of a display text.
// All decimal arithmetic here is integer arithmetic, so that the DLL (x87 code)
// and the native build give the same digits and the same doubles.
#include "typed/numbers.h"
#include "typed/typed_internal.h"
#include <stdint.h>
#include <string.h>

// The shared work area of the number and date code.
char g_szTypedWork[kTypedWorkSize];

namespace {

// ---- Small unsigned integers of 128 bits and of many limbs ----

struct U128 {
    uint64_t hi, lo;
};

U128 Mul64(uint64_t a, uint64_t b)
{
    uint64_t a0 = (uint32_t)a, a1 = a >> 32, b0 = (uint32_t)b, b1 = b >> 32;
    uint64_t p00 = a0 * b0, p01 = a0 * b1, p10 = a1 * b0, p11 = a1 * b1;
    uint64_t mid = (p00 >> 32) + (uint32_t)p01 + (uint32_t)p10;
    U128 r;
    r.lo = (mid << 32) | (uint32_t)p00;
    r.hi = p11 + (p01 >> 32) + (p10 >> 32) + (mid >> 32);
    return r;
}

// Bit i of x, for 0 <= i < 128.
bool Bit128(const U128& x, int i) { return i < 64 ? (x.lo >> i) & 1 : (x.hi >> (i - 64)) & 1; }

// x >> s for 0 < s < 128.
U128 Shr128(const U128& x, int s)
{
    U128 r;
    if (s >= 64) {
        r.hi = 0;
        r.lo = x.hi >> (s - 64);
    } else {
        r.hi = x.hi >> s;
        r.lo = (x.lo >> s) | (x.hi << (64 - s));
    }
    return r;
}

int BitLen64(uint64_t v)
{
    int n = 0;
    while (v) {
        ++n;
        v >>= 1;
    }
    return n;
}

// Little-endian 32-bit limbs; n is the count in use, without leading zero limbs.
// 48 limbs hold the largest double times 10^64 (1237 bits) and the 477 bits of
// a 127-digit decimal text scaled for division.
constexpr int kBigLimbs = 48;

struct Big {
    uint32_t w[kBigLimbs];
    int n;
};

void BigSet(Big& b, uint64_t v)
{
    b.n = 0;
    while (v) {
        b.w[b.n++] = (uint32_t)v;
        v >>= 32;
    }
}

void BigMulAdd(Big& b, uint32_t m, uint32_t add)
{
    uint64_t carry = add;
    for (int i = 0; i < b.n; ++i) {
        uint64_t t = (uint64_t)b.w[i] * m + carry;
        b.w[i] = (uint32_t)t;
        carry = t >> 32;
    }
    if (carry && b.n < kBigLimbs)
        b.w[b.n++] = (uint32_t)carry;
}

constexpr uint32_t kPow10u32[10] = {1,      10,      100,      1000,      10000,
                                    100000, 1000000, 10000000, 100000000, 1000000000};

void BigMulPow10(Big& b, int k)
{
    for (; k >= 9; k -= 9)
        BigMulAdd(b, kPow10u32[9], 0);
    if (k)
        BigMulAdd(b, kPow10u32[k], 0);
}

int BigBitLen(const Big& b) { return b.n ? (b.n - 1) * 32 + BitLen64(b.w[b.n - 1]) : 0; }

bool BigBit(const Big& b, int i)
{
    int limb = i / 32;
    return i >= 0 && limb < b.n && ((b.w[limb] >> (i % 32)) & 1);
}

void BigShl(Big& b, int bits)
{
    if (!b.n || bits <= 0)
        return;
    int limbs = bits / 32, s = bits % 32;
    int n = b.n + limbs + 1;
    if (n > kBigLimbs)
        n = kBigLimbs; // never reached by the callers' sizes
    for (int i = n - 1; i >= 0; --i) {
        int src = i - limbs;
        uint32_t hi = (src >= 0 && src < b.n) ? b.w[src] : 0;
        uint32_t lo = (src - 1 >= 0 && src - 1 < b.n) ? b.w[src - 1] : 0;
        b.w[i] = s ? (hi << s) | (lo >> (32 - s)) : hi;
    }
    b.n = n;
    while (b.n && !b.w[b.n - 1])
        --b.n;
}

void BigShr(Big& b, int bits)
{
    int limbs = bits / 32, s = bits % 32;
    if (limbs >= b.n) {
        b.n = 0;
        return;
    }
    int n = b.n - limbs;
    for (int i = 0; i < n; ++i) {
        uint32_t lo = b.w[i + limbs];
        uint32_t hi = (i + limbs + 1 < b.n) ? b.w[i + limbs + 1] : 0;
        b.w[i] = s ? (lo >> s) | (hi << (32 - s)) : lo;
    }
    b.n = n;
    while (b.n && !b.w[b.n - 1])
        --b.n;
}

int BigCmp(const Big& a, const Big& b)
{
    if (a.n != b.n)
        return a.n < b.n ? -1 : 1;
    for (int i = a.n - 1; i >= 0; --i)
        if (a.w[i] != b.w[i])
            return a.w[i] < b.w[i] ? -1 : 1;
    return 0;
}

// a -= b, with a >= b.
void BigSub(Big& a, const Big& b)
{
    int64_t borrow = 0;
    for (int i = 0; i < a.n; ++i) {
        int64_t t = (int64_t)a.w[i] - (i < b.n ? b.w[i] : 0) - borrow;
        borrow = t < 0;
        a.w[i] = (uint32_t)(t + (borrow << 32));
    }
    while (a.n && !a.w[a.n - 1])
        --a.n;
}

uint32_t BigDivSmall(Big& b, uint32_t d)
{
    uint64_t rem = 0;
    for (int i = b.n - 1; i >= 0; --i) {
        uint64_t cur = (rem << 32) | b.w[i];
        b.w[i] = (uint32_t)(cur / d);
        rem = cur % d;
    }
    while (b.n && !b.w[b.n - 1])
        --b.n;
    return (uint32_t)rem;
}

// ---- Decimal digits of a double ----

constexpr uint64_t Pow5(int k) { return k ? 5 * Pow5(k - 1) : 1; }
constexpr uint64_t kPow5[28] = {
    Pow5(0),  Pow5(1),  Pow5(2),  Pow5(3),  Pow5(4),  Pow5(5),  Pow5(6),  Pow5(7),  Pow5(8),  Pow5(9),
    Pow5(10), Pow5(11), Pow5(12), Pow5(13), Pow5(14), Pow5(15), Pow5(16), Pow5(17), Pow5(18), Pow5(19),
    Pow5(20), Pow5(21), Pow5(22), Pow5(23), Pow5(24), Pow5(25), Pow5(26), Pow5(27)};

// round(m x 2^e x 10^places), an exact tie going up, when it fits 64 bits and
// places is small: m x 5^places then fits 128 bits and the 2^(e + places) is
// a shift. False when the big path must do it.
bool RoundFast(uint64_t m, int e, int places, uint64_t* n)
{
    if (places > 27)
        return false;
    U128 prod = Mul64(m, kPow5[places]);
    int sh = e + places;
    if (sh >= 0) {
        if (prod.hi || sh >= 64 || (sh && (prod.lo >> (64 - sh))))
            return false;
        *n = prod.lo << sh;
        return true;
    }
    int s = -sh;
    if (s >= 128) { // the product is below 2^117: nothing reaches the half
        *n = 0;
        return true;
    }
    U128 q = Shr128(prod, s);
    bool up = Bit128(prod, s - 1); // the half bit: at or above a half rounds up
    if (q.hi || (up && q.lo == UINT64_MAX))
        return false;
    *n = q.lo + up;
    return true;
}

// Writes the decimal form of v without leading zeros; returns its length.
int U64ToDigits(uint64_t v, char* out)
{
    char tmp[20];
    int n = 0;
    while (v >= 0x100000000ull) { // split off 9 digits at a time with one 64-bit division
        uint32_t chunk = (uint32_t)(v % 1000000000u);
        v /= 1000000000u;
        for (int i = 0; i < 9; ++i, chunk /= 10)
            tmp[n++] = (char)('0' + chunk % 10);
    }
    for (uint32_t w = (uint32_t)v; w; w /= 10)
        tmp[n++] = (char)('0' + w % 10);
    for (int i = 0; i < n; ++i)
        out[i] = tmp[n - 1 - i];
    return n;
}

// The same as RoundFast for any double, through big integers.
int RoundBig(uint64_t m, int e, int places, char* out)
{
    Big N;
    BigSet(N, m);
    if (e >= 0) {
        BigShl(N, e);
        BigMulPow10(N, places);
    } else {
        BigMulPow10(N, places);
        bool up = BigBit(N, -e - 1);
        BigShr(N, -e);
        if (up) {
            if (!N.n)
                BigSet(N, 1);
            else
                BigMulAdd(N, 1, 1);
        }
    }
    uint32_t chunks[kNumDigitsSize / 9 + 2];
    int count = 0;
    while (N.n && count < (int)(sizeof chunks / sizeof chunks[0]))
        chunks[count++] = BigDivSmall(N, 1000000000u);
    if (!count)
        return 0;
    int len = U64ToDigits(chunks[count - 1], out);
    for (int c = count - 2; c >= 0; --c) {
        uint32_t v = chunks[c];
        for (int i = 8; i >= 0; --i, v /= 10)
            out[len + i] = (char)('0' + v % 10);
        len += 9;
    }
    return len;
}

// ---- Reading a decimal text ----

// m x 2^e2 rounded to 53 bits, ties to even; m has at least 54 bits and the
// value lies well inside the normal range.
double Assemble(uint64_t m, int e2, bool sticky, bool negative)
{
    int drop = BitLen64(m) - 54;
    if (drop > 0) {
        sticky |= (m & ((1ull << drop) - 1)) != 0;
        m >>= drop;
        e2 += drop;
    }
    bool half = m & 1;
    m >>= 1;
    ++e2;
    if (half && (sticky || (m & 1)))
        ++m;
    if (m == (1ull << 53)) {
        m >>= 1;
        ++e2;
    }
    uint64_t bits = ((uint64_t)(e2 + 52 + 1023) << 52) | (m & ((1ull << 52) - 1));
    if (negative)
        bits |= 1ull << 63;
    double d;
    memcpy(&d, &bits, sizeof d);
    return d;
}

constexpr uint64_t Pow10(int k) { return k ? 10 * Pow10(k - 1) : 1; }

// digits / 10^k, for up to 19 significant digits and k up to 18: one 64-bit
// division, then the quotient's further bits from the remainder until it has
// 55 or more. A divisor below 2^32 gives up to 32 bits per division (a single
// machine division in the 32-bit build); a larger one gives them one by one.
double ReadFast(uint64_t digits, int k, bool negative)
{
    uint64_t b = Pow10(k);
    uint64_t q = digits / b, r = digits % b;
    int e2 = 0;
    if (b < 0x100000000ull) {
        while (q < (1ull << 54)) {
            int take = 55 - BitLen64(q);
            if (take > 32)
                take = 32;
            uint64_t t = r << take; // r < b < 2^32
            q = (q << take) | (t / b);
            r = t % b;
            e2 -= take;
        }
        return Assemble(q, e2, r != 0, negative);
    }
    while (q < (1ull << 54)) {
        r <<= 1;
        q <<= 1;
        if (r >= b) {
            r -= b;
            q |= 1;
        }
        --e2;
    }
    return Assemble(q, e2, r != 0, negative);
}

// The same for any count of digits, by long division of big integers scaled so
// that the quotient has 55 or 56 bits.
double ReadBig(const char* sig, int count, int k, bool negative)
{
    Big n, b;
    BigSet(n, 0);
    for (int i = 0; i < count; i += 9) {
        int len = count - i < 9 ? count - i : 9;
        uint32_t chunk = 0;
        for (int j = 0; j < len; ++j)
            chunk = chunk * 10 + (uint32_t)(sig[i + j] - '0');
        if (!n.n)
            BigSet(n, chunk);
        else
            BigMulAdd(n, kPow10u32[len], chunk);
    }
    BigSet(b, 1);
    BigMulPow10(b, k);
    int diff = BigBitLen(n) - BigBitLen(b), e2 = 0;
    if (diff < 55) {
        BigShl(n, 55 - diff);
        e2 = diff - 55;
    } else if (diff > 55) {
        BigShl(b, diff - 55);
        e2 = diff - 55;
    }
    Big shifted = b;
    BigShl(shifted, 55);
    uint64_t q = 0;
    for (int i = 55; i >= 0; --i) {
        if (BigCmp(n, shifted) >= 0) {
            BigSub(n, shifted);
            q |= 1ull << i;
        }
        BigShr(shifted, 1);
    }
    return Assemble(q, e2, n.n != 0, negative);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

int Clamp(int v, int low, int high) { return v < low ? low : v > high ? high : v; }

} // namespace

int HNumDigits(double value, int places, char* digits, int capacity, int* decpt, int* sign)
{
    places = Clamp(places, 0, kNumMaxPlaces);
    uint64_t bits;
    memcpy(&bits, &value, sizeof bits);
    *sign = (int)(bits >> 63);
    int biased = (int)((bits >> 52) & 0x7FF);
    uint64_t m = bits & ((1ull << 52) - 1);
    if (biased == 0x7FF || capacity < kNumDigitsSize) {
        if (capacity > 0)
            digits[0] = 0;
        *decpt = 0;
        return -1;
    }
    int e = -1074;
    if (biased) {
        m |= 1ull << 52;
        e = biased - 1075;
    }
    int len = 0;
    uint64_t n;
    if (m) {
        if (RoundFast(m, e, places, &n))
            len = n ? U64ToDigits(n, digits) : 0;
        else
            len = RoundBig(m, e, places, digits);
    }
    digits[len] = 0;
    *decpt = len - places;
    return len;
}

double HNumReadDecimal(LPCSTR text)
{
    char sig[128];
    int count = 0, k = 0;
    bool any = false, negative = false;
    const char* p = text;
    if (*p == '-') {
        negative = true;
        ++p;
    }
    for (; IsDigit(*p); ++p) {
        any = true;
        if ((count || *p != '0') && count < (int)sizeof sig)
            sig[count++] = *p;
    }
    if (*p == '.')
        for (++p; IsDigit(*p); ++p) {
            any = true;
            if (count || *p != '0') {
                if (count >= (int)sizeof sig)
                    break; // longer than any caller's text
                sig[count++] = *p;
            }
            ++k;
        }
    while (count && k && sig[count - 1] == '0') { // trailing zeros of the fraction
        --count;
        --k;
    }
    if (!any)
        return 0.0;
    if (!count)
        return negative ? -0.0 : 0.0;
    if (count <= 19 && k <= 18) {
        uint64_t v = 0;
        for (int i = 0; i < count; ++i)
            v = v * 10 + (uint64_t)(sig[i] - '0');
        return ReadFast(v, k, negative);
    }
    return ReadBig(sig, count, k, negative);
}

void HNumLayoutScan(LPCSTR mask, BOOL negative, BOOL editing, HNumLayout* layout)
{
    memset(layout, 0, sizeof *layout);
    const char* s = mask;
    if (negative) {
        const char* semi = strchr(mask, ';');
        if (semi)
            s = semi + 1; // the negative section shows the sign its own way
        else
            layout->flags |= HNUM_MINUS;
    }
    layout->section = s;
    if (*s == '[') {
        const char* close = s;
        while (*close && *close != ';' && *close != ']')
            ++close;
        if (*close == ']')
            s = close + 1;
    }
    layout->intPart = s;
    bool zeroSeen = false;
    const char* p = s;
    for (; *p && *p != ';' && *p != '.'; ++p) {
        switch (*p) {
        case '#':
            ++layout->intSlots;
            if (layout->intMax >= 0)
                ++layout->intMax;
            break;
        case '*':
            ++layout->intSlots;
            layout->intMax = -1;
            break;
        case '0':
            // While editing, "000" must not pad what the user types.
            if (!editing || !zeroSeen) {
                ++layout->intSlots;
                ++layout->intZeros;
            }
            zeroSeen = true;
            if (layout->intMax >= 0)
                ++layout->intMax;
            break;
        case ',':
            layout->flags |= HNUM_GROUP;
            break;
        default:
            ++layout->intLiterals;
        }
    }
    layout->intLength = (int)(p - s);
    if (*p != '.')
        return;
    const char* f = p;
    for (; *f && *f != ';'; ++f) {
        switch (*f) {
        case '#':
            ++layout->fracSlots;
            if (layout->fracMax >= 0)
                ++layout->fracMax;
            break;
        case '*':
            ++layout->fracSlots;
            layout->fracMax = -1;
            break;
        case '0':
            ++layout->fracSlots;
            ++layout->fracZeros;
            if (layout->fracMax >= 0)
                ++layout->fracMax;
            break;
        case ',':
            layout->flags |= HNUM_GROUP;
            break;
        default: // the "." itself among them
            ++layout->fracLiterals;
        }
    }
    layout->fracLength = (int)(f - p);
}

LPSTR HNumPlace(LPSTR target, LPCSTR mask, int maskLength, LPCSTR digits, int digitCount,
                int slots, int zeros, int literals, BOOL grouping, BOOL backwards, LPSTR low,
                LPSTR high)
{
    const int step = backwards ? -1 : 1;
    int at = backwards ? maskLength - 1 : 0;
    const char* d = backwards ? digits + digitCount : digits;
    int group = 0;
    auto put = [&](char c) {
        if (backwards) {
            if (target > low)
                *--target = c;
        } else if (target < high) {
            *target++ = c;
        }
    };
    auto nextDigit = [&]() { return backwards ? *--d : *d++; };
    auto literalOf = [](char c) { return c == '.' ? g_cDecimalSep : c; };

    for (;;) {
        if ((digitCount == 0 || slots <= 0) && zeros <= 0) {
            // Digits beyond the mask's slots are still written: no mask cuts a number.
            while (digitCount > 0) {
                put(nextDigit());
                --digitCount;
                if (grouping && digitCount > 0 && ++group % 3 == 0)
                    put(g_cThousandSep);
            }
            for (; literals > 0 && at >= 0 && at < maskLength; at += step) {
                char c = mask[at];
                if (c == '#' || c == '*' || c == ',')
                    continue; // a "0" left here is written as a literal
                put(literalOf(c));
                --literals;
            }
            return target;
        }
        if (at < 0 || at >= maskLength) { // only reached with counts that do not match the mask
            zeros = 0;
            slots = 0;
            continue;
        }
        char c = mask[at];
        if (c == '#' || c == '*' || c == '0') {
            bool placed = false;
            if (digitCount > 0) {
                put(nextDigit());
                --digitCount;
                --slots;
                if (zeros > 0)
                    --zeros;
                placed = true;
            } else if (c == '0' && zeros > 0) {
                put('0');
                --zeros;
                placed = true;
            }
            // The counter runs over what was written, so separators fall
            // between written digits only.
            if (placed && grouping && (digitCount > 0 || zeros > 0) && ++group % 3 == 0)
                put(g_cThousandSep);
        } else if (c != ',' && literals > 0) {
            put(literalOf(c));
            --literals;
        }
        at += step;
    }
}

extern "C" LPCSTR QUILLAPI HNumMaskParse(LPCSTR mask, BOOL negative, BOOL editing, HNumMask* parsed)
{
    if (parsed)
        memset(parsed, 0, sizeof *parsed);
    if (!mask)
        return nullptr;
    HNumLayout l;
    HNumLayoutScan(mask, negative, editing, &l);
    if (parsed) {
        parsed->sectionLength = (BYTE)Clamp(l.intLength + l.fracLength, 0, 255);
        parsed->intLength = (BYTE)Clamp(l.intLength, 0, 255);
        parsed->intSlots = (BYTE)Clamp(l.intSlots, 0, 255);
        parsed->intZeros = (BYTE)Clamp(l.intZeros, 0, 255);
        parsed->intMax = (signed char)Clamp(l.intMax, -1, 127);
        parsed->intLiterals = (BYTE)Clamp(l.intLiterals, 0, 255);
        parsed->fracLength = (BYTE)Clamp(l.fracLength, 0, 255);
        parsed->fracSlots = (BYTE)Clamp(l.fracSlots, 0, 255);
        parsed->fracZeros = (BYTE)Clamp(l.fracZeros, 0, 255);
        parsed->fracMax = (signed char)Clamp(l.fracMax, -1, 127);
        parsed->fracLiterals = (BYTE)Clamp(l.fracLiterals, 0, 255);
        parsed->flags = l.flags;
    }
    return l.section;
}

extern "C" int QUILLAPI HFormatDouble(double number, LPCSTR mask, LPSTR text, int size, BOOL editing)
{
    if (!text || size < 2)
        return 0;
    if (!mask || !*mask)
        mask = kDefaultNumMask;
    BOOL negative = number < 0;
    HNumLayout l;
    HNumLayoutScan(mask, negative, editing, &l);
    if (editing && negative)
        l.flags |= HNUM_MINUS; // a value being edited shows a plain minus sign
    int places = l.fracMax < 0 ? kNumMaxPlaces : Clamp(l.fracMax, 0, kNumMaxPlaces);

    // Room in front for the zeros of a negative point position.
    char buffer[kNumMaxPlaces + kNumDigitsSize];
    char* digits = buffer + kNumMaxPlaces;
    int decpt, sign;
    int length = HNumDigits(number, places, digits, kNumDigitsSize, &decpt, &sign);
    if (length < 0) { // infinity and NaN have no digits: shown as too wide
        memset(text, '#', (size_t)(size - 1));
        text[size - 1] = 0;
        return 0;
    }
    if (decpt < 0) {
        digits += decpt;
        memset(digits, '0', (size_t)-decpt);
        length -= decpt;
        decpt = 0;
    }
    int intDigits = decpt, fracDigits = length - decpt;
    while (fracDigits > 0 && digits[intDigits + fracDigits - 1] == '0')
        --fracDigits;
    int fracLiterals = l.fracLiterals;
    if (!fracDigits && !l.fracZeros && fracLiterals == 1)
        fracLiterals = 0; // a bare "." is not shown

    const bool minus = (l.flags & HNUM_MINUS) != 0;
    const bool grouping = (l.flags & HNUM_GROUP) && !editing;
    int intShown = intDigits > l.intZeros ? intDigits : l.intZeros;
    int intWidth = intShown + minus + (editing ? 0 : l.intLiterals) + (grouping ? (intShown - 1) / 3 : 0);
    int fracShown = fracDigits > l.fracZeros ? fracDigits : l.fracZeros;
    int total = intWidth + fracShown + (editing ? 0 : fracLiterals);
    // While editing the point is written but left out of the total; it still
    // needs its byte.
    int fracLiteralsOwing = editing ? (fracLiterals > 0 ? 1 : 0) : fracLiterals;
    int point = editing && fracLiteralsOwing && l.fracLength ? 1 : 0;
    if (size <= total + point) {
        memset(text, '#', (size_t)(size - 1));
        text[size - 1] = 0;
        return 0;
    }

    LPSTR high = text + size - 1;
    LPSTR start = HNumPlace(text + intWidth, l.intPart, l.intLength, digits, intDigits, l.intSlots,
                            l.intZeros, editing ? 0 : l.intLiterals, grouping, TRUE, text, high);
    if (minus && start > text)
        *--start = '-'; // left of everything placed, literals included
    LPSTR end = HNumPlace(text + intWidth, l.intPart + l.intLength, l.fracLength, digits + intDigits,
                          fracDigits, l.fracSlots, l.fracZeros, fracLiteralsOwing, FALSE, FALSE,
                          text, high);
    *end = 0;
    return total;
}

extern "C" double QUILLAPI HNumStrip(LPCSTR text)
{
    if (!text)
        return 0.0;
    // Digits, minus signs and the decimal separator as "."; everything else
    // falls away wherever it stands. Bounded by the work area.
    int n = 0;
    for (const char* p = text; *p && n < kTypedWorkSize - 1; ++p) {
        char c = *p;
        if (IsDigit(c) || c == '-')
            g_szTypedWork[n++] = c;
        else if (c == g_cDecimalSep)
            g_szTypedWork[n++] = '.';
    }
    g_szTypedWork[n] = 0;
    return HNumReadDecimal(g_szTypedWork);
}

// Reads a stored value of type T from memory of any alignment.
template <class T> static double ReadAs(LPCVOID value)
{
    T v;
    memcpy(&v, value, sizeof v);
    return (double)v;
}

extern "C" double QUILLAPI NumToDouble(LPCVOID value, char type)
{
    if (!value)
        return 0.0;
    switch (type) {
    case HTYPE_BYTE: return ReadAs<uint8_t>(value);
    case HTYPE_CHAR: return ReadAs<int8_t>(value);
    case HTYPE_SHORT: return ReadAs<int16_t>(value);
    case HTYPE_WORD: return ReadAs<uint16_t>(value);
    case HTYPE_INT:
    case HTYPE_LONG: return ReadAs<int32_t>(value);
    case HTYPE_ULONG:
    case HTYPE_DWORD: return ReadAs<uint32_t>(value);
    case HTYPE_FLOAT: return ReadAs<float>(value);
    case HTYPE_DOUBLE: return ReadAs<double>(value);
    default: // M among them
        return 0.0;
    }
}

bool HNumStoreUnsigned(char type, LPVOID target, DWORD v)
{
    switch (type) {
    case HTYPE_BYTE:
    case HTYPE_CHAR:
        *(uint8_t*)target = (uint8_t)v;
        return true;
    case HTYPE_SHORT:
    case HTYPE_WORD: {
        uint16_t w = (uint16_t)v;
        memcpy(target, &w, sizeof w);
        return true;
    }
    case HTYPE_INT:
    case HTYPE_LONG:
    case HTYPE_ULONG:
    case HTYPE_DWORD:
        memcpy(target, &v, sizeof v);
        return true;
    }
    return false;
}

extern "C" BOOL QUILLAPI DoubleToNum(LPVOID value, char type, double number)
{
    if (!value)
        return FALSE;
    switch (type) {
    case HTYPE_DOUBLE:
        memcpy(value, &number, sizeof number);
        return TRUE;
    case HTYPE_FLOAT: {
        float f = (float)number;
        memcpy(value, &f, sizeof f);
        return TRUE;
    }
    case HTYPE_BYTE:
    case HTYPE_CHAR:
    case HTYPE_SHORT:
    case HTYPE_WORD:
    case HTYPE_INT:
    case HTYPE_LONG:
    case HTYPE_ULONG:
    case HTYPE_DWORD: {
        // Out of range, and NaN, store 0 without an error; a narrow type keeps
        // the low bits of what is in range (300 in a byte is 44).
        if (!(number <= 4294967295.0 && number >= -2147483648.0))
            number = 0;
        uint32_t low = (uint32_t)(int64_t)number;
        if (type == HTYPE_BYTE || type == HTYPE_CHAR) {
            uint8_t v = (uint8_t)low;
            memcpy(value, &v, sizeof v);
        } else if (type == HTYPE_SHORT || type == HTYPE_WORD) {
            uint16_t v = (uint16_t)low;
            memcpy(value, &v, sizeof v);
        } else {
            memcpy(value, &low, sizeof low);
        }
        return TRUE;
    }
    default:
        return FALSE;
    }
}
