// Internal routines of the number code: exact decimal digits of a double, the
// reading of a stripped decimal text, the mask scan in full precision and the
// digit placer behind HFormatDouble.
#pragma once
#include "quill32.h"

// The mask that a null or empty number mask stands for.
constexpr char kDefaultNumMask[] = "*0.*";

// Decimals beyond this are never asked of HNumDigits.
constexpr int kNumMaxPlaces = 64;
// Capacity that HNumDigits needs: 309 integer digits of the largest double,
// kNumMaxPlaces decimals, a terminator and some slack.
constexpr int kNumDigitsSize = 400;

// The decimal digits of |value| rounded to `places` decimals, as the runtime's
// _fcvt gives them: the digits of round(|value| x 10^places) without a point or
// leading zeros, `*decpt` the number of them before the point (negative when
// the value is below 1 and zeros stand behind the point), `*sign` 1 for a
// negative value. Exact: works on the binary value of the double and rounds an
// exact tie away from zero. A result of zero gives "" and -places. `places` is
// taken into 0..kNumMaxPlaces. Returns the number of digits, or -1 for an
// infinity, a NaN, or a `capacity` below kNumDigitsSize.
int HNumDigits(double value, int places, char* digits, int capacity, int* decpt, int* sign);

// Reads a decimal text as the runtime's atof would: an optional "-", digits,
// an optional "." and digits, stopping at anything else; no exponent. The
// result is correctly rounded (ties to even), with integer arithmetic only, so
// that every build gives the same double. Up to 127 significant characters.
double HNumReadDecimal(LPCSTR text);

// Stores v at the width of an integer type letter (b h s w i l u W), keeping its
// low bits. False, with nothing written, for any other type.
bool HNumStoreUnsigned(char type, LPVOID target, DWORD v);

// One section of a number mask, counted in full precision (HNumMask holds the
// same counts cut to bytes).
struct HNumLayout {
    LPCSTR section;   // first character of the section that applies
    LPCSTR intPart;   // first character of the integer part, behind any [...]
    int intLength;    // characters of the integer part
    int intSlots;     // "#", "*", "0" positions
    int intZeros;     // "0" positions (while editing only the first counts)
    int intMax;       // "#" and "0" count, -1 once a "*" was seen
    int intLiterals;  // literals of the integer part
    int fracLength;   // characters from the "." on, 0 if there is no "."
    int fracSlots;
    int fracZeros;
    int fracMax;
    int fracLiterals; // the "." counts as one
    WORD flags;       // HNUM_GROUP, HNUM_MINUS
};

// Scans the section of `mask` that applies. `mask` must not be null.
void HNumLayoutScan(LPCSTR mask, BOOL negative, BOOL editing, HNumLayout* layout);

// Lays digits into the target along one part of a mask. Backwards, the walk
// starts at the last mask character of the part and the target is written
// right to left from `target` - 1; forwards, from the first mask character and
// `target`. Nothing is written outside [low, high). Returns where it stopped.
LPSTR HNumPlace(LPSTR target, LPCSTR mask, int maskLength, LPCSTR digits, int digitCount,
                int slots, int zeros, int literals, BOOL grouping, BOOL backwards, LPSTR low,
                LPSTR high);
