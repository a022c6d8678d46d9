// Gathers what the library uses of the host family's base library.
#pragma once

#include "platform/ChecksumKeys.h"
#include "platform/DataRecords.h"
#include "platform/Error.h"
#include "platform/ExTime.h"
#include "platform/FileObject.h"
#include "platform/Numerics.h"
#include "platform/StringAppend.h"
#include "platform/Tokenizer.h"
#include "platform/Translator.h"
#include "platform/UnitConverter.h"
