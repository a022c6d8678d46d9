// Gathers what the library uses of the application framework: strings, string arrays, text files
// and the registration of extension modules.
#pragma once

#include "platform/ExtensionModule.h"
#include "platform/FrameworkString.h"
#include "platform/StdioFile.h"
#include "platform/StringArray.h"
