// The shared tests' platform hooks: the real profile under Wine, the seam's table natively.
#include "testseam.h"
#ifdef _WIN32
#include <string.h>
// Wine keeps the "Intl" section of the profile in the registry under
// Control Panel\International, and caches win.ini apart from it: a value is
// written to both, so that every reader sees it at once.
void TestSetProfile(const char* section, const char* key, const char* value)
{
    if (section && !_stricmp(section, "Intl")) {
        HKEY k;
        if (RegCreateKeyExA(HKEY_CURRENT_USER, "Control Panel\\International", 0, nullptr, 0, KEY_ALL_ACCESS,
                            nullptr, &k, nullptr) == ERROR_SUCCESS) {
            if (value)
                RegSetValueExA(k, key, 0, REG_SZ, (const BYTE*)value, (DWORD)strlen(value) + 1);
            else
                RegDeleteValueA(k, key);
            RegCloseKey(k);
        }
    }
    WriteProfileStringA(section, key, value);
}
#else
#include "seam_native.h"
void TestSetProfile(const char* section, const char* key, const char* value)
{
    SeamNativeSetProfile(section, key, value);
}
#endif
