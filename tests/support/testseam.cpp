// The shared tests' platform hooks: the real profile under Wine, the seam's table natively.
#include "testseam.h"
#ifdef _WIN32
void TestSetProfile(const char* section, const char* key, const char* value)
{
    WriteProfileStringA(section, key, value);
}
#else
#include "seam_native.h"
void TestSetProfile(const char* section, const char* key, const char* value)
{
    SeamNativeSetProfile(section, key, value);
}
#endif
