// The library as a whole: its version, and whether it was accepted when it was loaded.
#pragma once

#include "values/LumAttributesExport.h"

/// Whether the library fitted the platform it was loaded into and is registered with the framework.
/// Where the operating system lets a library refuse its load, this is true whenever it can be
/// called; elsewhere a refused library stays loaded and answers false. May be called from any
/// thread once the library is loaded.
LUM_ATTRIBUTES_API bool LumAttributesAttached();

/// The library's version as four numbers, such as "5.5.1.0". Static storage.
LUM_ATTRIBUTES_API const char* LumAttributesVersion();
