// HButt: registration, the record's life, the specification text, sound, the
// value with its data link and radio group, and the end of a click.
#include "buttons/hbutt.h"
#include "frame/frame.h"
#include "typed/numbers.h"
#include "frame/strings.h"

#include <string.h>

HImage g_buttNoValue[2];

namespace {

using SndPlaySoundProc = BOOL(WINAPI*)(LPCSTR sound, UINT flags);

constexpr UINT kSndSync = 0x0000;
constexpr UINT kSndAsync = 0x0001;
constexpr UINT kSndMemory = 0x0004;
constexpr WORD kMinSoundVersion = 0x30A; // 3.10, major in the high byte
constexpr char kSoundExtension[] = ".WAV";
constexpr char kAsyncPrefix[] = "%a";

int g_liveButtons;                   // buttons alive; the first loads g_buttNoValue, the last frees it
SndPlaySoundProc g_sndPlaySound;     // found in WinMM at the first button with a sound

// The resource strings that make up a type's default text; 0 for none.
struct DefaultText {
    UINT prefix, caption, images;
};
constexpr DefaultText kDefaultTexts[] = {
    {IDS_HBUTT_PUSHPREFIX, IDS_HBUTT_PUSH, 0},                       // HBT_PUSH
    {IDS_HBUTT_PUSHPREFIX, IDS_HBUTT_PUSH, 0},                       // HBT_DEFPUSH
    {IDS_HBUTT_CHECKPREFIX, IDS_HBUTT_CHECK, IDS_HBUTT_CHECKIMAGES},  // HBT_CHECK
    {IDS_HBUTT_BOXPREFIX, IDS_HBUTT_RADIO, IDS_HBUTT_RADIOIMAGES},    // HBT_RADIO
    {IDS_HBUTT_BOXPREFIX, IDS_HBUTT_3STATE, IDS_HBUTT_3STATEIMAGES},  // HBT_3STATE
    {0, 0, 0},                                                       // 5: no such type
    {IDS_HBUTT_PUSHPREFIX, IDS_HBUTT_PUSH, 0},                       // HBT_PUSHRADIO
};

HINSTANCE HButtModule(const HButtRec* b)
{
    return (HINSTANCE)GetWindowLongA(b->base.hWnd, GWL_HINSTANCE);
}

// Appends text to buffer of size bytes holding length characters; the new length.
int AppendBounded(LPSTR buffer, int size, int length, LPCSTR text)
{
    return length + _fstrnzcpy(buffer + length, text, size - length);
}

// Finds sndPlaySoundA once; a platform too old or without WinMM gives up the sound.
bool HButtLoadPlayer(HButtRec* b)
{
    if (!g_sndPlaySound) {
        HMODULE winmm = HGetVersion() >= kMinSoundVersion ? LoadLibraryA("WinMM.DLL") : nullptr;
        if (winmm)
            g_sndPlaySound = (SndPlaySoundProc)(void*)GetProcAddress(winmm, "sndPlaySoundA");
    }
    if (g_sndPlaySound)
        return true;
    HButtFreeSound(b);
    return false;
}

// A sound field: a resource of type 400 in the window's module, else a file.
void HButtSetSound(HButtRec* b, LPCSTR name)
{
    if (strncmp(name, kAsyncPrefix, sizeof kAsyncPrefix - 1) == 0) {
        b->base.dwStyle |= HBS_ASYNCSOUND;
        name += sizeof kAsyncPrefix - 1;
    }
    if (!*name)
        return; // nothing to find: WinMM stays unloaded
    HRSRC found = FindResourceA(HButtModule(b), name, MAKEINTRESOURCEA(kButtSoundType));
    if (!found) {
        HButtSetSoundFile(b, name);
        return;
    }
    b->hSound = found;
    if (HButtHas(b, HBS_ASYNCSOUND)) {
        HGLOBAL loaded = LoadResource(HButtModule(b), found);
        LockResource(loaded);
        b->hSound = loaded;
    }
    HButtLoadPlayer(b);
}

// Loads the names of an image list into fresh slots; a name that fails takes none.
void HButtLoadImages(HButtRec* b, LPCSTR list)
{
    b->images = (HImage*)GlobalAlloc(GPTR, kButtImageChunk * sizeof(HImage));
    if (!b->images)
        return;
    HINSTANCE module = HButtModule(b);
    LPCSTR next = list;
    while (*next && b->imageCount < 0xFF) {
        char name[kButtSpecSize];
        _fstrnzcpy(name, StringParse(next, ':', '\\', 0, 0, &next), sizeof name);
        UINT room = HButtImageRoom(b);
        if (b->imageCount + 2u > room) {
            HImage* grown = (HImage*)GlobalReAlloc(b->images, (room + kButtImageChunk) * sizeof(HImage),
                                                   GMEM_MOVEABLE | GMEM_ZEROINIT);
            if (!grown)
                return;
            b->images = grown;
        }
        if (HImageLoad(&b->images[b->imageCount], module, name))
            b->imageCount += 1;
    }
}

// Sends BM_SETCHECK (0, 0) to the radio buttons of the group in one direction,
// taking their tab stop; FALSE when the walk came back round to the button.
bool HButtClearGroup(HWND self, bool previous)
{
    HWND parent = GetParent(self), first = nullptr;
    for (HWND h = GetNextDlgGroupItem(parent, self, previous); h; h = GetNextDlgGroupItem(parent, h, previous)) {
        if (h == self)
            return false;
        if (h == first || !HButtAnswersRadio(h))
            return true; // a ring without the button in it ends as well
        if (!first)
            first = h;
        SetWindowLongA(h, GWL_STYLE, GetWindowLongA(h, GWL_STYLE) & ~WS_TABSTOP);
        SendMessageA(h, BM_SETCHECK, 0, 0);
    }
    return true;
}

} // namespace

UINT HButtImageRoom(const HButtRec* b)
{
    return b->images ? (UINT)(GlobalSize(GlobalHandle(b->images)) / sizeof(HImage)) : 0;
}

BYTE HButtStateCount(const HButtRec* b)
{
    UINT base = (HButtType(b) > HBT_DEFPUSH ? 2 : 1) * HButtStep(b);
    return (BYTE)(b->imageCount > base ? b->imageCount : base);
}

void HButtFreeImages(HButtRec* b)
{
    for (UINT i = 0; b->images && i < b->imageCount; ++i)
        if (b->images[i].handle)
            HImageFree(&b->images[i], TRUE);
    if (b->images)
        GlobalFree(GlobalHandle(b->images));
    b->images = nullptr;
    b->imageCount = 0;
}

void HButtFreeSound(HButtRec* b)
{
    if (b->hSound && HButtHas(b, HBS_ASYNCSOUND)) {
        if (g_sndPlaySound)
            g_sndPlaySound(nullptr, kSndMemory); // stops it
        FreeResource(b->hSound);
    }
    HStrReplace(&b->soundFile, nullptr);
    b->hSound = nullptr;
}

BOOL HButtSetSoundFile(HButtRec* b, LPCSTR name)
{
    HStrReplace(&b->soundFile, nullptr);
    if (!name || !*name)
        return FALSE;
    char file[MAX_PATH];
    _fstrnzcpy(file, name, sizeof file);
    if (!strchr(file, '.') && strlen(file) + sizeof kSoundExtension <= sizeof file)
        strcat(file, kSoundExtension);
    // OpenFile gives -1 for a missing file, which passes as well: a wrong name is only silence.
    OFSTRUCT of = {};
    if (OpenFile(file, &of, OF_EXIST) == 0)
        return FALSE;
    b->soundFile = HStrDup(file);
    b->base.wFlags |= HBF_SOUNDFILE;
    return HButtLoadPlayer(b) ? TRUE : FALSE;
}

void HButtPlaySound(HButtRec* b)
{
    bool async = HButtHas(b, HBS_ASYNCSOUND);
    if (!(b->base.wFlags & HBF_PRESSED) || !b->hSound) {
        if (b->soundFile && g_sndPlaySound)
            g_sndPlaySound(b->soundFile, async ? kSndAsync : kSndSync);
        return;
    }
    HGLOBAL loaded = async ? (HGLOBAL)b->hSound : LoadResource(HButtModule(b), (HRSRC)b->hSound);
    LPCSTR data = (LPCSTR)LockResource(loaded);
    if (data && g_sndPlaySound)
        g_sndPlaySound(data, async ? (kSndMemory | kSndAsync) : kSndMemory);
    if (!async)
        FreeResource(loaded);
}

void HButtParseSpec(HButtRec* b, LPCSTR text)
{
    HButtSpec spec;
    if (!HButtSpecRead(text, HButtType(b) == HBT_CHECK, &b->colorText, &b->colorTransparent, &spec))
        return;
    HButtFreeImages(b);
    HButtFreeSound(b);
    HStrReplace(&b->text, nullptr);
    BYTE* positions[] = {&b->textPos, &b->imagePos, &b->relation};
    for (int i = 0; i < spec.positionCount; ++i)
        *positions[i] = spec.positions[i];
    if (HButtType(b) == HBT_CHECK)
        b->dataType = spec.dataType;
    if (spec.fieldCount > 0)
        b->text = HStrDup(spec.caption);
    HButtLoadImages(b, spec.images);
    HButtSetSound(b, spec.sound);
    b->stateCount = HButtStateCount(b);
    if (spec.colors < 2) // each transparent colour found adds 2
        b->colorTransparent = RGB(0, 255, 0);
}

extern "C" int QUILLAPI LoadDefTypeText(int type, LPSTR buffer, int size, LPCSTR text)
{
    if (type < 0 || type >= (int)(sizeof kDefaultTexts / sizeof kDefaultTexts[0]) || !kDefaultTexts[type].prefix)
        return 0;
    if (!buffer || size <= 0)
        return 0;
    const DefaultText& d = kDefaultTexts[type];
    char piece[kButtSpecSize];
    int length = LoadStringA(g_hInstance, d.prefix, buffer, size);
    buffer[length] = 0;
    if (!text) {
        LoadStringA(g_hInstance, d.caption, piece, sizeof piece);
        text = piece;
    }
    length = AppendBounded(buffer, size, length, text);
    if (d.images) {
        length = AppendBounded(buffer, size, length, ";");
        LoadStringA(g_hInstance, d.images, piece, sizeof piece);
        length = AppendBounded(buffer, size, length, piece);
    }
    return length;
}

HButtRec* HButtCreate(HWND hWnd, CREATESTRUCTA* cs)
{
    HButtRec* b = (HButtRec*)HCtlNewRecord(hWnd, cs, sizeof(HButtRec));
    if (!b)
        return nullptr;
    b->base.dwStyle = cs->style;
    b->dataType = HTYPE_WORD;
    // An ordinal in place of a name is no text either.
    LPCSTR text = (cs->lpszName && !IS_INTRESOURCE(cs->lpszName)) ? cs->lpszName : "";
    char buffer[kButtSpecSize] = "";
    if (!HButtIsSpec(text)) {
        LoadDefTypeText(HButtType(b), buffer, sizeof buffer, text);
        text = buffer;
    }
    HButtParseSpec(b, text);
    if (!b->stateCount)
        b->stateCount = HButtStateCount(b); // a type without a default text
    if (++g_liveButtons == 1) {
        for (HImage& image : g_buttNoValue) {
            image = HImage{};
            HImageLoad(&image, g_hInstance, kButtNoValueImage);
        }
    }
    if (HButtHas(b, HBS_NOFOCUS))
        cs->style &= ~(DWORD)WS_TABSTOP;
    return b;
}

void HButtDestroy(HWND hWnd, HButtRec* b)
{
    HButtFreeImages(b);
    HButtFreeSound(b);
    HStrReplace(&b->text, nullptr);
    HCtlFreeRecord(hWnd, b);
    if (--g_liveButtons == 0)
        for (HImage& image : g_buttNoValue)
            if (image.handle)
                HImageFree(&image, TRUE);
}

void HButtSetPressed(HButtRec* b, BOOL pressed)
{
    if (pressed)
        b->base.wFlags |= HBF_PRESSED;
    else
        b->base.wFlags &= (WORD)~HBF_PRESSED;
    InvalidateRect(b->base.hWnd, nullptr, TRUE);
}

bool HButtAnswersRadio(HWND hWnd)
{
    return hWnd && (SendMessageA(hWnd, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON);
}

bool HButtStoreState(char type, LPVOID target, UINT state)
{
    return HNumStoreUnsigned(type, target, state);
}

UINT HButtGroupPos(const HButtRec* b)
{
    UINT position = 1;
    HWND parent = GetParent(b->base.hWnd), current = b->base.hWnd;
    for (HWND prev = GetWindow(current, GW_HWNDPREV);
         prev && prev == GetNextDlgGroupItem(parent, current, TRUE) && HButtAnswersRadio(prev);
         prev = GetWindow(current, GW_HWNDPREV)) {
        position += 1;
        current = prev;
    }
    return position;
}

UINT HButtNextValue(const HButtRec* b)
{
    return HButtIsRadio(b) ? 1 : b->state / HButtStep(b) + 1;
}

LRESULT HButtSetValue(HButtRec* b, UINT value, BOOL notify)
{
    value *= HButtStep(b);
    b->base.wFlags &= (WORD)~HBF_NOVALUE;
    UINT state = value % (b->stateCount ? b->stateCount : 1);
    if (state != b->state) {
        b->state = (BYTE)state;
        b->base.wFlags |= HCTLF_MODIFIED;
    }
    if (b->dataLink) {
        if (!HButtIsRadio(b)) {
            HButtStoreState(b->dataType, b->dataLink, b->state / HButtStep(b));
        } else if (b->state == HButtStep(b)) {
            WORD on = (WORD)((b->base.wFlags & HBF_GROUPPOS) ? HButtGroupPos(b) : b->base.wId);
            memcpy(b->dataLink, &on, sizeof on);
        }
    }
    HButtSetPressed(b, (b->base.wFlags & HBF_PRESSED) != 0);
    if (HButtIsRadio(b) && HButtHas(b, HBS_AUTO) && value) {
        HWND self = b->base.hWnd;
        if (HButtHas(b, WS_TABSTOP))
            SetWindowLongA(self, GWL_STYLE, GetWindowLongA(self, GWL_STYLE) | WS_TABSTOP);
        if (HButtClearGroup(self, false))
            HButtClearGroup(self, true);
        if (notify && IsWindow(self))
            HCtlNotify(b, HBN_CLICKED);
    } else if (value && notify) {
        HCtlNotify(b, HBN_CLICKED);
    }
    return 1;
}

void HButtClick(HButtRec* b)
{
    if (!HButtHas(b, HBS_AUTO)) {
        HButtSetPressed(b, FALSE);
        HCtlNotify(b, HBN_CLICKED); // may destroy the window
        return;
    }
    HWND self = b->base.hWnd;
    HButtSetValue(b, HButtNextValue(b), TRUE); // notifies while still pressed
    if (IsWindow(self))
        HButtSetPressed(b, FALSE);
}

void HButtRegister()
{
    HRegisterClass(CS_GLOBALCLASS | CS_PARENTDC | CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, HButtWnd, 0, 8,
                   g_hInstance, nullptr, LoadCursorA(nullptr, IDC_ARROW), (HBRUSH)(COLOR_WINDOW + 1),
                   nullptr, HBUTT_CLASS);
}

extern "C" LRESULT CALLBACK HButtWnd(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return HCtlWndProc(hWnd, msg, wParam, lParam, HButtMsgHandler, 4);
}
