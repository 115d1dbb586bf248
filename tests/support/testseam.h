// What the shared tests need from the platform, in both builds.
#pragma once
#include "quill32.h"

// Writes a value of the Windows profile (a null value removes the key).
void TestSetProfile(const char* section, const char* key, const char* value);
