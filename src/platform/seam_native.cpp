// Native implementations of the seam for the Linux build of the window-free layers.
#include "seam_native.h"

#include <fcntl.h>
#include <stdlib.h>
#include <string.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>
#include <string>

namespace {

// Each block carries its size in front, so that SeamSize and SeamReAlloc work.
constexpr size_t kHead = 16;

struct ProfileKey {
    std::string section, key;
    bool operator<(const ProfileKey& o) const
    {
        int c = strcasecmp(section.c_str(), o.section.c_str());
        if (c != 0) return c < 0;
        return strcasecmp(key.c_str(), o.key.c_str()) < 0;
    }
};

std::map<ProfileKey, std::string>& Profile()
{
    static std::map<ProfileKey, std::string> profile;
    return profile;
}

int g_beeps;
SeamNotifyHook g_notify;
SeamFocusHook g_focus;
SeamWindowLongHook g_windowLong;
SeamBaseUnitsHook g_baseUnits;
int g_destroyedWindows;
SeamRecordHook g_record;

} // namespace

void* SeamAlloc(size_t n)
{
    if (n > (size_t)0x7fffffff) return nullptr;
    unsigned char* b = (unsigned char*)calloc(1, n + kHead);
    if (!b) return nullptr;
    memcpy(b, &n, sizeof n);
    return b + kHead;
}

void* SeamReAlloc(void* p, size_t n)
{
    if (!p) return SeamAlloc(n);
    if (n > (size_t)0x7fffffff) return nullptr;
    size_t old = SeamSize(p);
    unsigned char* b = (unsigned char*)realloc((unsigned char*)p - kHead, n + kHead);
    if (!b) return nullptr;
    if (n > old) memset(b + kHead + old, 0, n - old);
    memcpy(b, &n, sizeof n);
    return b + kHead;
}

void SeamFree(void* p)
{
    if (p) free((unsigned char*)p - kHead);
}

size_t SeamSize(const void* p)
{
    if (!p) return 0;
    size_t n;
    memcpy(&n, (const unsigned char*)p - kHead, sizeof n);
    return n;
}

DWORD SeamProfileString(LPCSTR section, LPCSTR key, LPCSTR def, LPSTR out, DWORD size)
{
    if (!out || size == 0) return 0;
    auto it = Profile().find({section ? section : "", key ? key : ""});
    const char* v = it != Profile().end() ? it->second.c_str() : (def ? def : "");
    size_t n = strlen(v);
    if (n > size - 1) n = size - 1;
    memcpy(out, v, n);
    out[n] = 0;
    return (DWORD)n;
}

UINT SeamProfileInt(LPCSTR section, LPCSTR key, INT def)
{
    auto it = Profile().find({section ? section : "", key ? key : ""});
    if (it == Profile().end()) return (UINT)def;
    return (UINT)atoi(it->second.c_str()); // leading digits, like the profile API
}

void SeamBeep() { ++g_beeps; }
DWORD SeamNotify(LPVOID record, UINT code) { return g_notify ? g_notify(record, code) : 0; }
HWND SeamSetFocus(HWND w) { return g_focus ? g_focus(w) : nullptr; }
LONG SeamGetWindowLong(HWND w, int index) { return g_windowLong ? g_windowLong(w, index) : 0; }
BOOL SeamIsWindow(HWND w) { return w != nullptr; }
LPVOID SeamGetRecord(HWND w) { return g_record && w ? g_record(w) : nullptr; }
BOOL SeamDestroyWindow(HWND w)
{
    if (!w) return FALSE;
    ++g_destroyedWindows;
    return TRUE;
}
DWORD SeamBaseUnits(HFONT f) { return g_baseUnits ? g_baseUnits(f) : MAKELONG(8, 16); }

HFILE SeamFileOpen(LPCSTR name) { return name ? open(name, O_RDONLY) : HFILE_ERROR; }
HFILE SeamFileCreate(LPCSTR name) { return name ? open(name, O_WRONLY | O_CREAT | O_TRUNC, 0644) : HFILE_ERROR; }
UINT SeamFileRead(HFILE f, void* buf, UINT n)
{
    ssize_t r = read(f, buf, n);
    return r < 0 ? (UINT)HFILE_ERROR : (UINT)r;
}
UINT SeamFileWrite(HFILE f, const void* buf, UINT n)
{
    ssize_t r = write(f, buf, n);
    return r < 0 ? (UINT)HFILE_ERROR : (UINT)r;
}
LONG SeamFileSeek(HFILE f, LONG offset, int origin)
{
    off_t r = lseek(f, offset, origin);
    return r < 0 ? -1 : (LONG)r;
}
void SeamFileClose(HFILE f) { if (f >= 0) close(f); }
// No search path here: the name is opened as given and is the path found.
HFILE SeamFileSearch(LPCSTR name, UINT, LPSTR path)
{
    path[0] = 0;
    if (!name)
        return HFILE_ERROR;
    strncat(path, name, OFS_MAXPATHNAME - 1);
    return open(name, O_RDONLY);
}
LONG SeamFileSizeOf(LPCSTR path)
{
    struct stat st;
    return stat(path, &st) == 0 && st.st_size <= 0x7FFFFFFF ? (LONG)st.st_size : -1;
}

void SeamNativeSetProfile(LPCSTR section, LPCSTR key, LPCSTR value)
{
    if (value) Profile()[{section, key}] = value;
    else Profile().erase({section, key});
}
void SeamNativeClearProfile() { Profile().clear(); }
int SeamNativeBeeps() { return g_beeps; }
void SeamNativeResetBeeps() { g_beeps = 0; }
void SeamNativeSetHooks(SeamNotifyHook notify, SeamFocusHook focus, SeamWindowLongHook windowLong)
{
    g_notify = notify;
    g_focus = focus;
    g_windowLong = windowLong;
}
void SeamNativeSetBaseUnitsHook(SeamBaseUnitsHook hook) { g_baseUnits = hook; }
int SeamNativeDestroyedWindows() { return g_destroyedWindows; }
void SeamNativeSetRecordHook(SeamRecordHook hook) { g_record = hook; }
